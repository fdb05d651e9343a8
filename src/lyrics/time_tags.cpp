#include "lyrics/time_tags.h"

#include <algorithm>

namespace {

bool is_digit(char c) {
  return c >= '0' && c <= '9';
}

/** The number at two positions. Only the first character has to be a digit; the second is not checked. */
long two_digits(const std::string& line, size_t at) {
  return is_digit(line[at]) ? (line[at] - '0') * 10L + (line[at + 1] - '0') : 0;
}

void append_two_digits(long number, std::string* text) {
  text->push_back(static_cast<char>('0' + number / 10));
  text->push_back(static_cast<char>('0' + number % 10));
}

} // namespace

bool time_tag_to_time(const std::string& line, long* time, bool* extended) {
  if (line.size() < 7 || line[0] != '[') return false;
  const bool hasHundredths = line.size() > 8 && is_digit(line[7]);
  const long hundredths = hasHundredths ? two_digits(line, 7) : 0;
  *time = two_digits(line, 1) * 60000 + two_digits(line, 4) * 1000 + hundredths * 10;
  *extended = hasHundredths;
  return true;
}

bool time_to_time_tag(long time, std::string* tag, bool extended) {
  const long bounded = std::clamp(time, 0L, kLastTagTime);
  tag->assign(1, '[');
  append_two_digits(bounded / 60000, tag);
  tag->push_back(':');
  append_two_digits(bounded % 60000 / 1000, tag);
  if (extended) {
    tag->push_back(':');
    append_two_digits(bounded % 1000 / 10, tag);
  }
  tag->push_back(']');
  return true;
}

void remove_time_tag(std::string* line) {
  if (line->empty() || line->front() != '[') return;
  const size_t end = line->find(']');
  if (end != std::string::npos) line->erase(0, end + 1);
}

std::string strip_prefix(const std::string& text) {
  constexpr const char* kMiddleDot = "\u30fb";
  const size_t dash = text.find('-');
  const size_t dot = text.find(kMiddleDot);
  const size_t afterDash = dash == std::string::npos ? 0 : dash + 2;
  const size_t afterDot = dot == std::string::npos ? 0 : dot + 3;
  return text.substr(std::min(std::max(afterDash, afterDot), text.size()));
}
