#pragma once

#include "platform/support/types.h"

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

  /** Waits until there is room. */
  virtual bool Write(std::span<const int16> samples) = 0;
  /** How long after now the sample that is written next will be heard. */
  virtual bigtime_t LatencyUs() = 0;
};

/** The desktop's sound server; null when there is none. Waits for it. */
std::unique_ptr<TClickOutput> open_click_output();
