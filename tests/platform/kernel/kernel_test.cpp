#include "platform/kernel/images.h"
#include "platform/kernel/port_frame.h"
#include "platform/kernel/ports.h"
#include "platform/kernel/semaphores.h"
#include "tests/support/testing.h"
#include "tests/support/waiter.h"

#include <cerrno>

namespace {

ssize_t size_of_next(port_id port) {
  char byte = 0;
  return read_port(port, nullptr, &byte, 1);
}

} // namespace

TEST(Semaphores, WakeAWaiterWhenReleasedAndWhenDeleted) {
  const sem_id sem = create_sem(1, "x");
  EXPECT_EQ(acquire_sem(sem), B_OK);
  EXPECT_EQ(acquire_sem_etc(sem, 0), B_WOULD_BLOCK);
  EXPECT_EQ(acquire_sem_etc(sem, 1000), B_TIMED_OUT);
  for (const bigtime_t timeout : {B_INFINITE_TIMEOUT, INT64_MAX - 1}) // the second does not overflow
    expect_woken([=] { EXPECT_EQ(acquire_sem_etc(sem, timeout), B_OK); }, [=] { EXPECT_EQ(release_sem(sem), B_OK); });
  const auto wait = [sem] { EXPECT_EQ(acquire_sem(sem), B_BAD_SEM_ID); };
  expect_woken(wait, [=] { expect_woken(wait, [=] { delete_sem(sem); }); });
  for (const status_t status : {release_sem(sem), acquire_sem(sem), delete_sem(sem)}) EXPECT_EQ(status, B_BAD_SEM_ID);
  EXPECT_EQ(create_sem(-1, "x"), B_BAD_VALUE);
}

TEST(Threads, ReturnTheirResultAndAreKnownUntilTheyEnd) {
  const auto entry = [](void* result) { return *static_cast<int32*>(result); };
  int32 result = 7;
  const thread_id thread = spawn_thread(entry, "of the test", B_NORMAL_PRIORITY, &result);
  EXPECT_EQ(get_thread_priority(thread), B_NORMAL_PRIORITY);
  EXPECT_EQ(set_thread_priority(thread, B_NORMAL_PRIORITY + 1), B_OK);
  EXPECT_EQ(get_thread_priority(thread), B_NORMAL_PRIORITY + 1);
  EXPECT_EQ(find_thread("of the test"), thread);
  int32 returned = 0;
  expect_woken([&] { EXPECT_EQ(wait_for_thread(thread, &returned), B_OK); },
               [=] { EXPECT_EQ(resume_thread(thread), B_OK); });
  EXPECT_EQ(returned, 7);
  for (const status_t status : {resume_thread(thread), wait_for_thread(thread, nullptr), rename_thread(thread, "x"),
                                set_thread_priority(thread, 1), get_thread_priority(thread)})
    EXPECT_EQ(status, B_BAD_THREAD_ID);
}

TEST(Ports, WakeAReaderOfAnEmptyPortAndAWriterToAFullOne) {
  const port_id port = create_port(1, "a port of a test");
  const auto read = [port] {
    char byte = 0;
    int32 code = 0;
    return read_port(port, &code, &byte, 1) < 0 ? int32{B_BAD_PORT_ID} : code;
  };
  const auto write = [port](int32 code) { return write_port(port, code, "x", 1); };
  expect_woken([port] { EXPECT_EQ(port_buffer_size(port), 1); }, [&] { EXPECT_EQ(write(1), B_OK); });
  EXPECT_EQ(read(), 1);
  expect_woken([&] { EXPECT_EQ(read(), 2); }, [&] { EXPECT_EQ(write(2), B_OK); });
  EXPECT_EQ(write(3), B_OK);
  expect_woken([&] { EXPECT_EQ(write(4), B_OK); }, [&] { EXPECT_EQ(read(), 3); });
  expect_woken([&] { EXPECT_EQ(write(5), B_BAD_PORT_ID); }, [port] { delete_port(port); });
  for (const auto call : {&port_buffer_size, &size_of_next}) {
    const port_id empty = create_port(1, "another port of a test");
    expect_woken([=] { EXPECT_EQ(call(empty), B_BAD_PORT_ID); }, [empty] { delete_port(empty); });
  }
}

TEST(Ports, AMessageLongerThanTheBufferIsTruncated) {
  const port_id port = create_port(1, "a port of a test");
  EXPECT_EQ(write_port(port, 7, "abc", 3), B_OK);
  char bytes[] = "...";
  EXPECT_EQ(read_port(port, nullptr, bytes, 2), 2);
  EXPECT_STREQ(bytes, "ab.");
  for (const status_t status : {status_t{B_OK}, status_t{B_BAD_PORT_ID}}) EXPECT_EQ(delete_port(port), status);
  for (const ssize_t status : {ssize_t{port_count(port)}, read_port(port, nullptr, bytes, 2), port_buffer_size(port)})
    EXPECT_EQ(status, B_BAD_PORT_ID);
  EXPECT_EQ(create_port(0, "x"), B_BAD_VALUE);
}

TEST(PortFrames, AreWholeHoweverTheirBytesArrive) {
  std::string stream;
  for (const std::string text : {"first", "", "third, and longest"}) {
    const auto head = frame_head({7, kFrameDontWait, 99, {}}, text.size());
    stream.append(head.data(), head.size()).append(text);
  }
  for (const size_t step : {size_t{1}, size_t{23}, size_t{25}, stream.size()}) {
    PortFrameReader reader;
    PortFrame frame;
    std::string texts;
    for (size_t at = 0; at < stream.size(); at += step) {
      const std::string piece = stream.substr(at, step);
      reader.Feed(piece);
      while (reader.Next(&frame)) {
        EXPECT_TRUE(frame.code == 7 && frame.flags == kFrameDontWait && frame.deadline == 99);
        texts.append(frame.bytes.begin(), frame.bytes.end()) += "|";
      }
    }
    EXPECT_EQ(texts, "first||third, and longest|") << step << " bytes at a time";
    EXPECT_EQ(reader.HeldBytes(), 0U);
    EXPECT_FALSE(reader.IsBroken());
  }
}

TEST(Images, StartWithTheProgramItself) {
  int32 cookie = 0;
  image_info image;
  ASSERT_EQ(get_next_image_info(&cookie, &image), B_OK);
  EXPECT_NE(image.name.find(program_invocation_short_name), std::string::npos);
  bool foundLibrary = false;
  while (get_next_image_info(&cookie, &image) == B_OK)
    foundLibrary |= image.name.find("libvesmo_platform") != std::string::npos;
  EXPECT_TRUE(foundLibrary);
}
