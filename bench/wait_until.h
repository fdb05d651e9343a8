#pragma once

#include <cstdint>
#include <ctime>

/** Sleeps until that time (monotonic, µs). */
inline void wait_until(int64_t us) {
  const timespec when{us / 1'000'000, us % 1'000'000 * 1000};
  clock_nanosleep(CLOCK_MONOTONIC, TIMER_ABSTIME, &when, nullptr);
}
