#pragma once

#include "platform/support/types.h"

#include <functional>
#include <memory>
#include <span>

/** Where the clicks of the tap test are heard: mono, 16 bits, kRate. On one thread. */
class TClickOutput {
public:
  static constexpr int32 kRate = 48000;

  TClickOutput() = default;
  TClickOutput(const TClickOutput&) = delete;
  TClickOutput& operator=(const TClickOutput&) = delete;
  virtual ~TClickOutput() = default;

  /** Waits until there is room. False when the output is gone, does not answer, or the wait was cancelled. */
  virtual bool Write(std::span<const int16> samples) = 0;
  /** How long after now the sample that is written next will be heard. */
  virtual bigtime_t LatencyUs() = 0;
};

/** Polled during every wait for the sound server; true cancels the wait. */
using TIsCancelled = std::function<bool()>;

/** The desktop's sound server; null when there is none or it does not answer within a few seconds. */
std::unique_ptr<TClickOutput> open_click_output(const TIsCancelled& isCancelled);
