#pragma once

#include "platform/support/types.h"

#include <functional>
#include <memory>
#include <span>

/** Audio output for the clicks of the tap test: mono, 16 bits, kRate. Not thread-safe. */
class TClickOutput {
public:
  static constexpr int32 kRate = 48000;

  TClickOutput() = default;
  TClickOutput(const TClickOutput&) = delete;
  TClickOutput& operator=(const TClickOutput&) = delete;
  virtual ~TClickOutput() = default;

  /** Blocks until all samples are queued. False when the output is gone, times out, or the wait was cancelled. */
  virtual bool Write(std::span<const int16> samples) = 0;
  /** Time from now until the next sample written is heard. */
  virtual bigtime_t LatencyUs() = 0;
};

/** Polled during every wait for the sound server; true cancels the wait. */
using TIsCancelled = std::function<bool()>;

/** The desktop's sound server; null when there is none or it does not answer within a few seconds. */
std::unique_ptr<TClickOutput> open_click_output(const TIsCancelled& isCancelled);
