#include "platform/kernel/images.h"
#include "platform/kernel/ports.h"
#include "platform/kernel/semaphores.h"
#include "platform/kernel/threads.h"

#include <gtest/gtest.h>

#include <stdexcept>
#include <thread>

TEST(Threads, ThatThrowEndAlone) {
  const thread_id thread =
      spawn_thread([](void*) -> int32 { throw std::runtime_error("on purpose"); }, "thrower", 10, nullptr);
  EXPECT_EQ(resume_thread(thread), B_OK);
  wait_for_thread(thread, nullptr);
  EXPECT_EQ(find_thread("thrower"), B_NAME_NOT_FOUND);
}

TEST(Threads, AreFoundByNameWhileTheyLive) {
  static sem_id go;
  go = create_sem(0, "go");
  const thread_id thread = spawn_thread([](void*) { return acquire_sem(go); }, "a thread of a test", 10, nullptr);
  EXPECT_EQ(find_thread("a thread of a test"), thread);
  EXPECT_EQ(resume_thread(thread), B_OK);
  EXPECT_EQ(set_thread_priority(thread, 15), B_OK);
  EXPECT_EQ(get_thread_priority(thread), 15);
  release_sem(go);
  wait_for_thread(thread, nullptr);
  EXPECT_EQ(find_thread("a thread of a test"), B_NAME_NOT_FOUND);
  delete_sem(go);
}

TEST(Semaphores, WakeTheirWaitersWhenDeleted) {
  const sem_id sem = create_sem(1, "x");
  EXPECT_EQ(acquire_sem(sem), B_OK);
  EXPECT_EQ(acquire_sem_etc(sem, 0), B_WOULD_BLOCK);
  EXPECT_EQ(acquire_sem_etc(sem, 1000), B_TIMED_OUT);
  std::thread waiter([&] { EXPECT_EQ(acquire_sem(sem), B_BAD_SEM_ID); });
  snooze(2000);
  delete_sem(sem);
  waiter.join();
  EXPECT_EQ(release_sem(sem), B_BAD_SEM_ID);
}

TEST(Ports, CarryMessagesAndRespectTheirCapacity) {
  const port_id port = create_port(1, "a port of a test");
  EXPECT_EQ(find_port("a port of a test"), port);
  EXPECT_EQ(write_port(port, 7, "abc", 3), B_OK);
  EXPECT_EQ(write_port_etc(port, 8, "x", 1, 0), B_WOULD_BLOCK);
  EXPECT_EQ(port_buffer_size(port), 3);
  char bytes[2];
  int32 code = 0;
  EXPECT_EQ(read_port(port, &code, bytes, sizeof bytes), 2) << "what does not fit is lost";
  EXPECT_EQ(code, 7);
  std::thread reader([&] { EXPECT_EQ(read_port(port, &code, bytes, sizeof bytes), B_BAD_PORT_ID); });
  snooze(2000);
  delete_port(port);
  reader.join();
  EXPECT_EQ(find_port("a port of a test"), B_NAME_NOT_FOUND);
}

TEST(Images, BeginWithTheProgramItself) {
  int32 cookie = 0;
  image_info image;
  ASSERT_EQ(get_next_image_info(&cookie, &image), B_OK);
  EXPECT_NE(image.name.find("platform_tests"), std::string::npos);
  bool foundLibrary = false;
  while (get_next_image_info(&cookie, &image) == B_OK)
    foundLibrary |= image.name.find("libvesmo_platform") != std::string::npos;
  EXPECT_TRUE(foundLibrary);
}
