#pragma once

// What nearly every test uses; a test includes this, and what it tests.
#include "tests/support/eventually.h"
#include "tests/support/scratch_folder.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <sys/stat.h>
#include <unistd.h>

#include <algorithm>
#include <array>
#include <atomic>
#include <chrono>
#include <climits>
#include <cmath>
#include <cstdlib>
#include <cstring>
#include <filesystem>
#include <fstream>
#include <functional>
#include <future>
#include <iterator>
#include <limits>
#include <list>
#include <map>
#include <memory>
#include <mutex>
#include <numeric>
#include <optional>
#include <random>
#include <set>
#include <sstream>
#include <stdexcept>
#include <string>
#include <string_view>
#include <thread>
#include <tuple>
#include <utility>
#include <vector>

/** A generator whose seed is named when the test fails. */
struct SeededRandom : std::mt19937 {
  explicit SeededRandom(unsigned seed = std::random_device()())
      : std::mt19937(seed), fTrace(__FILE__, __LINE__, "seed " + std::to_string(seed)) {}

private:
  const testing::ScopedTrace fTrace;
};
