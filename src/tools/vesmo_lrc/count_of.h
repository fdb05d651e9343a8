#pragma once

#include <string>

/** A number with its noun, singular or plural: "1 file", "2 files". */
inline std::string count_of(size_t count, const char* one, const char* many) {
  return std::to_string(count) + " " + (count == 1 ? one : many);
}
