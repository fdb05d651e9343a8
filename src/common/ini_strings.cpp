#include "common/ini_strings.h"

#include <algorithm>
#include <cstring>
#include <string>

namespace {

constexpr const char* kWhiteSpace = " \t\n\v\f\r";

int store(char* destination, const std::string& text) {
  std::memcpy(destination, text.c_str(), text.size() + 1);
  return static_cast<int>(text.size());
}

} // namespace

int trimleft(char* destination, const char* source) {
  const char* const start = source + std::strspn(source, kWhiteSpace);
  const size_t length = std::strlen(start);
  std::memmove(destination, start, length + 1);
  return static_cast<int>(length);
}

int trimright(char* destination, const char* source) {
  const std::string text = source;
  return store(destination, text.substr(0, text.find_last_not_of(kWhiteSpace) + 1));
}

int trim(char* destination, const char* source) {
  trimleft(destination, source);
  return trimright(destination, destination);
}

int mid(char* destination, const char* source, int start, int count) {
  const std::string text = source;
  const auto from = static_cast<size_t>(std::max(start, 1) - 1);
  if (count < 0 || from >= text.size()) return store(destination, "");
  return store(destination, text.substr(from, count == 0 ? std::string::npos : static_cast<size_t>(count)));
}

int instr(const char* text, const char* needle, int start) {
  const auto from = static_cast<size_t>(std::max(start, 1) - 1);
  if (*needle == '\0') return 0;
  const size_t found = std::string(text).find(needle, from);
  return found == std::string::npos ? 0 : static_cast<int>(found) + 1;
}

int repstr(char* destination, const char* source, const char* find, const char* replace, int start) {
  const int found = instr(source, find, start);
  std::string text = source;
  if (found > 0) text.replace(static_cast<size_t>(found) - 1, std::strlen(find), replace);
  store(destination, text);
  return found;
}
