#include "commands/key_names.h"

#include <algorithm>
#include <array>

namespace {

constexpr std::array<std::string_view, 4> kModifiers = {"Meta+", "Ctrl+", "Alt+", "Shift+"};
constexpr std::array<std::string_view, 13> kNames = {"Backspace", "Del",  "Down",   "End",   "Home",  "Ins", "Left",
                                                     "PgDown",    "PgUp", "Return", "Right", "Space", "Up"};
/** Without modifiers these move the selection. */
constexpr std::array<std::string_view, 8> kMoves = {"Down", "End", "Home", "Left", "PgDown", "PgUp", "Right", "Up"};
constexpr size_t kMostBytes = 40;
constexpr int kFunctionKeys = 24;

bool contains(const auto& names, std::string_view name) {
  return std::ranges::find(names, name) != names.end();
}

bool is_digit(char c) {
  return c >= '0' && c <= '9';
}

bool is_letter(char c) {
  return c >= 'A' && c <= 'Z';
}

bool is_function_key(std::string_view name) {
  if (name.size() < 2 || name.size() > 3 || name[0] != 'F' || name[1] == '0') return false;
  int number = 0;
  for (const char digit : name.substr(1)) {
    if (!is_digit(digit)) return false;
    number = number * 10 + (digit - '0');
  }
  return number <= kFunctionKeys;
}

/** One character outside ASCII, as a key of a national keyboard types it. */
bool is_wide_character(std::string_view name) {
  const auto byte = [&](size_t i) { return static_cast<unsigned char>(name[i]); };
  const size_t size = byte(0) >= 0xC2 && byte(0) < 0xE0 ? 2 : byte(0) >= 0xE0 && byte(0) < 0xF0 ? 3 : 0;
  if (name.size() != size) return false;
  const auto follows = [](char c) { return (static_cast<unsigned char>(c) & 0xC0) == 0x80; };
  return std::ranges::all_of(name.substr(1), follows);
}

bool is_key(std::string_view name) {
  if (name.empty()) return false;
  if (name.size() == 1) return name[0] > ' ' && name[0] <= '~' && (name[0] < 'a' || name[0] > 'z');
  return contains(kNames, name) || is_function_key(name) || is_wide_character(name);
}

std::string with_upper_case_letter(std::string_view name) {
  std::string key(name);
  if (key.size() == 1 && key[0] >= 'a' && key[0] <= 'z') key[0] = static_cast<char>(key[0] - 'a' + 'A');
  return key;
}

} // namespace

std::optional<std::string> normalized_keys(std::string_view text) {
  if (text.size() > kMostBytes) return {};
  std::array<bool, kModifiers.size()> isHeld{};
  for (size_t i = 0; i < kModifiers.size();) {
    if (!text.starts_with(kModifiers[i]) || text.size() == kModifiers[i].size()) {
      ++i;
      continue;
    }
    if (std::exchange(isHeld[i], true)) return {};
    text.remove_prefix(kModifiers[i].size());
    i = 0;
  }
  const std::string key = with_upper_case_letter(text);
  if (!is_key(key)) return {};
  std::string keys;
  for (size_t i = 0; i < kModifiers.size(); ++i)
    if (isHeld[i]) keys += kModifiers[i];
  return keys + key;
}

bool are_reserved_keys(std::string_view keys) {
  constexpr std::string_view kRecent = "Ctrl+Shift+"; // and a digit
  constexpr std::string_view kMenu = "Alt+";          // and a letter
  const auto is_with = [&](std::string_view modifiers) {
    return keys.size() == modifiers.size() + 1 && keys.starts_with(modifiers);
  };
  if (is_with(kRecent) && is_digit(keys.back())) return true;
  if (is_with(kMenu) && is_letter(keys.back())) return true;
  return contains(kMoves, keys) || keys == "F10" || keys == "F6";
}
