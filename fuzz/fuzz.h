#pragma once

#include <cstddef>
#include <cstdint>
#include <cstdlib>
#include <string>

/** An invariant; a violation ends the run and keeps the input. */
inline void require(bool holds) {
  if (!holds) std::abort();
}

inline std::string text_of(const uint8_t* bytes, size_t size) {
  return std::string(reinterpret_cast<const char*>(bytes), size);
}
