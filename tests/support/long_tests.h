#pragma once

#include <cstdlib>

/** ./test --long: run all iterations. */
inline bool long_tests() {
  return std::getenv("VESMO_LONG_TESTS") != nullptr;
}
