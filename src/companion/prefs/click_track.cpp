#include "companion/prefs/click_track.h"

#include "platform/kernel/threads.h"
#include "plugin/message_codes.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <deque>
#include <numbers>

namespace {

constexpr int64 kRate = TClickOutput::kRate;
/** Samples are written in blocks; a click is one block. */
constexpr int64 kBlock = kRate / 100;
/** Silence before the first click, to find the key, and after the last one, for its tap. */
constexpr int64 kLead = 150 * kBlock;
constexpr int64 kEvery = 75 * kBlock;
constexpr int64 kTail = 100 * kBlock;
constexpr int64 kLength = kLead + kEvery * (TClickTrack::kClicks - 1) + kTail;
constexpr bigtime_t kUsPerSecond = 1000000;

using TBlock = std::array<int16, kBlock>;

/** A wood-block sound: a sharp onset gives a clear moment. */
TBlock make_click() {
  constexpr double kHertz = 1600;
  constexpr double kFadeSeconds = 0.002;
  constexpr double kPeak = 24000;
  TBlock block{};
  for (size_t i = 0; i < block.size(); ++i) {
    const double seconds = static_cast<double>(i) / static_cast<double>(kRate);
    block[i] = static_cast<int16>(kPeak * std::exp(-seconds / kFadeSeconds) *
                                  std::cos(2 * std::numbers::pi * kHertz * seconds));
  }
  return block;
}

bool is_click(int64 sample) {
  return sample >= kLead && sample <= kLength - kTail && (sample - kLead) % kEvery == 0;
}

bigtime_t duration_us(int64 samples) {
  return samples * kUsPerSecond / kRate;
}

BMessage click_at(bigtime_t whenUs) {
  BMessage click(kMsgClick);
  click.AddInt64("WhenUs", whenUs);
  return click;
}

/** Keeps the pace without audio output. */
bigtime_t wait_until(bigtime_t whenUs) {
  snooze(std::max(whenUs - system_time(), bigtime_t{0}));
  return whenUs;
}

} // namespace

TClickTrack::TClickTrack(const BMessenger& target, int32 number, TOpen open)
    : TThread("Tap test", B_REAL_TIME_DISPLAY_PRIORITY), fTarget(target), fNumber(number), fOpen(std::move(open)) {}

TClickTrack::~TClickTrack() {
  Terminate();
  Wait();
}

void TClickTrack::Report(BMessage message) const {
  message.AddInt32("Test", fNumber);
  fTarget.SendMessage(&message, BMessenger(), 0);
}

int32 TClickTrack::Execute() {
  const TBlock click = make_click();
  const TBlock silence{};
  const std::unique_ptr<TClickOutput> output = fOpen([this] { return IsTerminated(); });
  if (!output) Report(BMessage(kMsgNoSound));
  const bigtime_t startUs = system_time();
  std::deque<bigtime_t> coming; // written but not heard yet
  for (int64 sample = 0; (sample < kLength || !coming.empty()) && !IsTerminated(); sample += kBlock) {
    bigtime_t heardUs = 0;
    if (!output)
      heardUs = wait_until(startUs + duration_us(sample));
    else if (output->Write(is_click(sample) ? click : silence))
      heardUs = system_time() + output->LatencyUs() - duration_us(kBlock);
    else
      break; // the sound server is gone
    if (is_click(sample)) coming.push_back(heardUs);
    for (; !coming.empty() && coming.front() <= system_time(); coming.pop_front()) {
      Report(click_at(coming.front()));
    }
  }
  Report(BMessage(kMsgTrackEnded));
  return 0;
}
