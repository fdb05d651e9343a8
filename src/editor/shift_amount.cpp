#include "editor/shift_amount.h"

#include <cerrno>
#include <cstdint>
#include <cstdlib>

bool is_shift_amount(const std::string& text) {
  constexpr const char* kBlanks = " \t";
  const size_t last = text.find_last_not_of(kBlanks);
  if (last == std::string::npos) return false;
  char* end = nullptr;
  errno = 0;
  const long amount = std::strtol(text.c_str(), &end, 10);
  return errno == 0 && end == text.c_str() + last + 1 && amount >= -INT32_MAX && amount <= INT32_MAX;
}
