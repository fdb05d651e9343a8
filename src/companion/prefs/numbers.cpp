#include "companion/prefs/numbers.h"

#include <charconv>

std::optional<long> whole_number(const std::string& text, long smallest, long largest) {
  const bool hasPlus = !text.empty() && text[0] == '+';
  long number = 0;
  const char* const end = text.data() + text.size();
  const auto [stopped, error] = std::from_chars(text.data() + (hasPlus ? 1 : 0), end, number);
  if (error != std::errc() || stopped != end || number < smallest || number > largest) return std::nullopt;
  return number;
}
