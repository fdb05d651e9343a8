#include "platform/app/desktop_entry.h"

#include <algorithm>
#include <map>

namespace {

/** Must be escaped in a quoted argument of Exec. */
constexpr std::string_view kEscapedInQuotes = "\"`$\\";
/** Only allowed in quoted arguments. */
constexpr std::string_view kReserved = "\t\n\"'\\><~|&;$*?#()`";
/** Files, URLs, icon, name and path of the entry, and deprecated codes; all are removed. */
constexpr std::string_view kFieldCodes = "fFuUickdDnNvm";

std::string_view trimmed(std::string_view text) {
  constexpr std::string_view kBlanks = " \t\r";
  const size_t first = text.find_first_not_of(kBlanks);
  if (first == text.npos) return {};
  return text.substr(first, text.find_last_not_of(kBlanks) - first + 1);
}

std::string_view take_line(std::string_view* text) {
  const size_t end = std::min(text->find('\n'), text->size());
  const std::string_view line = text->substr(0, end);
  text->remove_prefix(std::min(end + 1, text->size()));
  return trimmed(line);
}

using TKeys = std::map<std::string_view, std::string_view>;

/** The keys of the first group [Desktop Entry]; the first of a repeated key. */
TKeys keys_of(std::string_view text) {
  TKeys keys;
  bool isInGroup = false;
  while (!text.empty()) {
    const std::string_view line = take_line(&text);
    if (line.starts_with('[')) {
      if (isInGroup) break;
      isInGroup = line == "[Desktop Entry]";
    } else if (const size_t equals = line.find('='); isInGroup && !line.starts_with('#') && equals != line.npos) {
      keys.emplace(trimmed(line.substr(0, equals)), trimmed(line.substr(equals + 1)));
    }
  }
  return keys;
}

/** Resolves the escape sequences of a value of type string; nullopt for an unknown one. */
std::optional<std::string> unescaped(std::string_view value) {
  static const std::map<char, char> kEscapes{{'s', ' '}, {'n', '\n'}, {'t', '\t'}, {'r', '\r'}, {'\\', '\\'}};
  std::string plain;
  for (size_t i = 0; i < value.size(); ++i) {
    if (value[i] != '\\') {
      plain += value[i];
      continue;
    }
    const auto escape = ++i < value.size() ? kEscapes.find(value[i]) : kEscapes.end();
    if (escape == kEscapes.end()) return std::nullopt;
    plain += escape->second;
  }
  return plain;
}

/** Splits a command line into arguments, strictly: anything not allowed in Exec makes it invalid. */
class CommandLine {
public:
  explicit CommandLine(std::string_view text) : fLeft(text) {}

  std::optional<std::vector<std::string>> Arguments() {
    std::vector<std::string> arguments;
    while (SkipSpaces()) {
      const bool isQuoted = fLeft.front() == '"';
      std::string argument;
      if (!(isQuoted ? TakeQuoted(&argument) : TakePlain(&argument))) return std::nullopt;
      if (isQuoted || !argument.empty()) arguments.push_back(std::move(argument)); // else only a field code
    }
    if (arguments.empty() || arguments.front().empty()) return std::nullopt;
    return arguments;
  }

private:
  bool SkipSpaces() {
    while (fLeft.starts_with(' ')) fLeft.remove_prefix(1);
    return !fLeft.empty();
  }

  char Take() {
    const char first = fLeft.front();
    fLeft.remove_prefix(1);
    return first;
  }

  /** The character after a percent sign. */
  bool TakeFieldCode(std::string* argument) {
    if (fLeft.empty()) return false;
    const char code = Take();
    if (code == '%') argument->push_back(code);
    return code == '%' || kFieldCodes.find(code) != kFieldCodes.npos;
  }

  bool TakePlain(std::string* argument) {
    while (!fLeft.empty() && fLeft.front() != ' ') {
      const char next = Take();
      if (kReserved.find(next) != kReserved.npos) return false;
      if (next != '%') {
        argument->push_back(next);
      } else if (!TakeFieldCode(argument)) {
        return false;
      }
    }
    return true;
  }

  bool TakeQuoted(std::string* argument) {
    Take();
    while (!fLeft.empty()) {
      const char next = Take();
      if (next == '"') return fLeft.empty() || fLeft.front() == ' ';
      if (next == '\\' ? !TakeEscaped(argument) : !TakeInQuotes(next, argument)) return false;
    }
    return false; // no closing quote
  }

  bool TakeEscaped(std::string* argument) {
    if (fLeft.empty() || kEscapedInQuotes.find(fLeft.front()) == kEscapedInQuotes.npos) return false;
    argument->push_back(Take());
    return true;
  }

  bool TakeInQuotes(char next, std::string* argument) {
    if (next == '%') return TakeFieldCode(argument);
    argument->push_back(next);
    return kEscapedInQuotes.find(next) == kEscapedInQuotes.npos;
  }

  std::string_view fLeft;
};

std::string_view value_of(const TKeys& keys, std::string_view key) {
  const auto found = keys.find(key);
  return found == keys.end() ? std::string_view() : found->second;
}

} // namespace

std::optional<DesktopEntry> parse_desktop_entry(std::string_view text) {
  if (text.find('\0') != text.npos) return std::nullopt;
  const TKeys keys = keys_of(text);
  if (value_of(keys, "Hidden") == "true") return DesktopEntry{.signature = {}, .isHidden = true, .arguments = {}};
  if (value_of(keys, "Type") != "Application") return std::nullopt;
  const std::optional<std::string> signature = unescaped(value_of(keys, "X-KOREVA-Signature"));
  const std::optional<std::string> command = unescaped(value_of(keys, "Exec"));
  if (!signature || !command) return std::nullopt;
  std::optional<std::vector<std::string>> arguments = CommandLine(*command).Arguments();
  if (!arguments) return std::nullopt;
  return DesktopEntry{.signature = *signature, .isHidden = false, .arguments = std::move(*arguments)};
}
