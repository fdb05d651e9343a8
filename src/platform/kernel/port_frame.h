#pragma once

#include "platform/support/types.h"

#include <array>
#include <span>
#include <vector>

/** No message through a port is larger; who sends one hears B_MESSAGE_TOO_LARGE. */
inline constexpr size_t kMaxPortMessage = size_t{16} << 20;

/** What all senders to one process have sent of frames that are not whole yet or wait for room; a few large messages at
    once. When there is more, the sender that has been silent longest is cut off. */
inline constexpr size_t kMaxUnfinished = 4 * kMaxPortMessage;

enum : uint32 {
  kFrameDontWait = 1,    // to a port: B_WOULD_BLOCK rather than wait for room
  kFrameWantsAnswer = 2, // to a port: the sender listens for an answer after the status
  kFrameIsStatus = 4,    // back: `code` is what became of the message
  kFrameIsAnswer = 8,    // back: `bytes` is the answer to it
};

/** One message between two processes, to a port or back to its sender. A sender speaks again only after it heard what
    became of its last message. */
struct PortFrame {
  int32 code = 0;
  uint32 flags = 0;
  /** On the monotonic clock, which all processes share: what is late is not taken. */
  bigtime_t deadline = B_INFINITE_TIMEOUT;
  std::vector<char> bytes;
};

/** What goes before a frame's bytes. */
inline constexpr size_t kFrameHeadSize = 24;
std::array<char, kFrameHeadSize> frame_head(const PortFrame& frame, size_t byteCount);

/** Cuts a stream of bytes, which may come from anybody, into frames. */
class PortFrameReader {
public:
  void Feed(std::span<const char> bytes);
  /** The next whole frame; false when more bytes are needed, or none can come. */
  bool Next(PortFrame* frame);
  /** True when what came is no frame, or too large a one: nothing more is read. */
  bool IsBroken() const { return fBroken; }
  size_t HeldBytes() const { return fBytes.size() - fTaken; }

private:
  std::vector<char> fBytes;
  size_t fTaken = 0;
  bool fBroken = false;
};
