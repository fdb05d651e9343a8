#pragma once

#include <gtest/gtest.h>

#include <random>
#include <string>

/** Another seed for each run, or that of --gtest_random_seed, to repeat a run that failed. */
struct RandomSeed {
  unsigned value = GTEST_FLAG_GET(random_seed) != 0 ? static_cast<unsigned>(GTEST_FLAG_GET(random_seed))
                                                    : std::random_device()() % 99999 + 1;
  std::string Text() const { return "--gtest_random_seed=" + std::to_string(value); }
};
