#pragma once

#include "platform/support/types.h"

#include <array>
#include <span>
#include <vector>

/** Limit of a message through a port; sending a larger one fails with B_MESSAGE_TOO_LARGE. */
inline constexpr size_t kMaxPortMessage = size_t{16} << 20;

/** Limit of the unfinished and waiting frames of all senders to one process: a few large messages at once. Beyond it
    the sender that has been silent longest is disconnected. */
inline constexpr size_t kMaxUnfinished = 4 * kMaxPortMessage;

enum : uint32 {
  kFrameDontWait = 1,    // to a port: B_WOULD_BLOCK rather than wait for room
  kFrameWantsAnswer = 2, // to a port: the sender expects an answer besides the status
  kFrameIsStatus = 4,    // to the sender: `code` is the result of the delivery
  kFrameIsAnswer = 8,    // to the sender: `bytes` is the answer
};

/** One message between two processes, to a port or back to the sender. A sender waits for the status of a message
   before it sends the next. */
struct PortFrame {
  int32 code = 0;
  uint32 flags = 0;
  /** On the monotonic clock, which all processes share; later the message is not delivered. */
  bigtime_t deadline = B_INFINITE_TIMEOUT;
  std::vector<char> bytes;
};

/** The header of a frame. */
inline constexpr size_t kFrameHeadSize = 24;
std::array<char, kFrameHeadSize> frame_head(const PortFrame& frame, size_t byteCount);

/** Splits an untrusted byte stream into frames. */
class PortFrameReader {
public:
  void Feed(std::span<const char> bytes);
  /** The next complete frame; false when more bytes are needed, or the stream is broken. */
  [[nodiscard]] bool Next(PortFrame* frame);
  /** True after bytes that are no frame, or too large a one: nothing more is read. */
  bool IsBroken() const { return fBroken; }
  size_t HeldBytes() const { return fBytes.size() - fTaken; }

private:
  std::vector<char> fBytes;
  size_t fTaken = 0;
  bool fBroken = false;
};
