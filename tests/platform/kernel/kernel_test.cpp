#include "platform/kernel/images.h"
#include "platform/kernel/port_frame.h"
#include "platform/kernel/ports.h"
#include "platform/kernel/semaphores.h"
#include "tests/support/testing.h"
#include "tests/support/waiter.h"

#include <cerrno>

TEST(Semaphores, WakeAWaiterWhenReleasedAndWhenDeleted) {
  const sem_id sem = create_sem(1, "x");
  EXPECT_EQ(acquire_sem(sem), B_OK);
  EXPECT_EQ(acquire_sem_etc(sem, 0), B_WOULD_BLOCK);
  EXPECT_EQ(acquire_sem_etc(sem, 1000), B_TIMED_OUT);
  for (const bigtime_t timeout : {B_INFINITE_TIMEOUT, INT64_MAX - 1}) { // the second does not overflow
    const Waiter waiter([=] { EXPECT_EQ(acquire_sem_etc(sem, timeout), B_OK); });
    ASSERT_TRUE(waiter.Sleeps());
    EXPECT_EQ(release_sem(sem), B_OK);
    EXPECT_TRUE(waiter.IsWoken());
  }
  const auto wait = [sem] { EXPECT_EQ(acquire_sem(sem), B_BAD_SEM_ID); };
  const Waiter waiter(wait);
  const Waiter other(wait);
  ASSERT_TRUE(waiter.Sleeps() && other.Sleeps());
  delete_sem(sem);
  EXPECT_TRUE(waiter.IsWoken() && other.IsWoken());
  EXPECT_EQ(release_sem(sem), B_BAD_SEM_ID);
}

TEST(Ports, WakeAReaderOfAnEmptyPortAndAWriterToAFullOne) {
  const port_id port = create_port(1, "a port of a test");
  const auto read = [port] {
    char byte = 0;
    int32 code = 0;
    return read_port(port, &code, &byte, 1) < 0 ? int32{B_BAD_PORT_ID} : code;
  };
  {
    const Waiter onlooker([port] { EXPECT_EQ(port_buffer_size(port), 1); });
    const Waiter reader([&] { EXPECT_EQ(read(), 1); });
    ASSERT_TRUE(onlooker.Sleeps() && reader.Sleeps());
    EXPECT_EQ(write_port(port, 1, "x", 1), B_OK);
    EXPECT_TRUE(reader.IsWoken());
    EXPECT_EQ(write_port(port, 2, "x", 1), B_OK); // in case the reader was faster than the onlooker
    EXPECT_TRUE(onlooker.IsWoken());
  }
  {
    const Waiter writer([port] { EXPECT_EQ(write_port(port, 3, "x", 1), B_OK); });
    ASSERT_TRUE(writer.Sleeps());
    EXPECT_EQ(read(), 2);
    EXPECT_TRUE(writer.IsWoken());
  }
  const Waiter writer([port] { EXPECT_EQ(write_port(port, 4, "x", 1), B_BAD_PORT_ID); });
  ASSERT_TRUE(writer.Sleeps());
  delete_port(port);
  EXPECT_TRUE(writer.IsWoken());
  const port_id empty = create_port(1, "another port of a test");
  const Waiter reader([empty] { EXPECT_EQ(port_buffer_size(empty), B_BAD_PORT_ID); });
  ASSERT_TRUE(reader.Sleeps());
  delete_port(empty);
  EXPECT_TRUE(reader.IsWoken());
}

TEST(Ports, AMessageLongerThanTheBufferIsTruncated) {
  const port_id port = create_port(1, "a port of a test");
  EXPECT_EQ(write_port(port, 7, "abc", 3), B_OK);
  char bytes[] = "...";
  EXPECT_EQ(read_port(port, nullptr, bytes, 2), 2);
  EXPECT_STREQ(bytes, "ab.");
  delete_port(port);
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
