#pragma once

#include <cstdlib>

/** Whether there is time for every round: ./test --long. */
inline bool long_tests() {
  return std::getenv("VESMO_LONG_TESTS") != nullptr;
}
