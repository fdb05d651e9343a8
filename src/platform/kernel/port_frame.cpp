#include "platform/kernel/port_frame.h"

#include <cstring>
#include <utility>

namespace {

constexpr uint32 kMagic = 0x31505256;             // "VRP1" in memory
constexpr size_t kKeptCapacity = size_t{1} << 20; // a larger buffer is freed after the message

struct Head {
  uint32 magic;
  uint32 byteCount;
  int32 code;
  uint32 flags;
  bigtime_t deadline;
};
static_assert(sizeof(Head) == kFrameHeadSize);

} // namespace

std::array<char, kFrameHeadSize> frame_head(const PortFrame& frame, size_t byteCount) {
  const Head head{kMagic, static_cast<uint32>(byteCount), frame.code, frame.flags, frame.deadline};
  std::array<char, kFrameHeadSize> bytes{};
  std::memcpy(bytes.data(), &head, sizeof head);
  return bytes;
}

void PortFrameReader::Feed(std::span<const char> bytes) {
  fBytes.erase(fBytes.begin(), fBytes.begin() + static_cast<ptrdiff_t>(std::exchange(fTaken, 0)));
  if (fBytes.empty() && fBytes.capacity() > kKeptCapacity) fBytes.shrink_to_fit();
  fBytes.insert(fBytes.end(), bytes.begin(), bytes.end());
}

bool PortFrameReader::Next(PortFrame* frame) {
  const size_t left = fBytes.size() - fTaken;
  if (fBroken || left < kFrameHeadSize) return false;
  Head head{};
  std::memcpy(&head, fBytes.data() + fTaken, sizeof head);
  fBroken = head.magic != kMagic || head.byteCount > kMaxPortMessage;
  if (fBroken || left - kFrameHeadSize < head.byteCount) return false;
  const auto start = fBytes.begin() + static_cast<ptrdiff_t>(fTaken + kFrameHeadSize);
  *frame = {head.code, head.flags, head.deadline, {start, start + head.byteCount}};
  fTaken += kFrameHeadSize + head.byteCount;
  return true;
}
