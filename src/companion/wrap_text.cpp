#include "companion/wrap_text.h"

#include "platform/support/utf8.h"

#include <algorithm>

namespace {

struct TCharacter {
  size_t at;
  char32_t code;
};

/** A malformed sequence counts as one character that is not East Asian. */
std::vector<TCharacter> characters_of(std::string_view text) {
  std::vector<TCharacter> characters;
  for (size_t at = 0; at < text.size();) {
    const Utf8Character character = first_character(text.substr(at));
    characters.push_back({at, character.IsValid() ? character.code : U'?'});
    at += character.length;
  }
  return characters;
}

bool is_blank(char32_t c) {
  return c == U' ' || c == U'\t' || c == U'\u3000';
}

bool is_east_asian(char32_t c) {
  return c >= 0x2E80;
}

bool must_not_begin_a_row(char32_t c) {
  constexpr std::u32string_view kNever =
      U"、。，．・：；？！）」』】〕〉》］｝ーぁぃぅぇぉっゃゅょァィゥェォッャュョ々ゝ…";
  return kNever.find(c) != std::u32string_view::npos;
}

bool must_not_end_a_row(char32_t c) {
  return std::u32string_view(U"（「『【〔〈《［｛").find(c) != std::u32string_view::npos;
}

bool may_break_between(char32_t left, char32_t right) {
  if (is_blank(right)) return false; // only after the blanks
  if (is_blank(left)) return true;
  if (must_not_begin_a_row(right) || must_not_end_a_row(left)) return false;
  return is_east_asian(left) || is_east_asian(right);
}

std::string_view without_blanks(std::string_view text) {
  constexpr std::string_view kWide = "\u3000";
  while (text.ends_with(' ') || text.ends_with('\t')) text.remove_suffix(1);
  if (text.ends_with(kWide)) return without_blanks(text.substr(0, text.size() - kWide.size()));
  return text;
}

} // namespace

std::vector<std::string> wrap_text(std::string_view text, float width,
                                   const std::function<float(std::string_view)>& measure) {
  if (measure(text) <= width) return {std::string(text)};
  const std::vector<TCharacter> characters = characters_of(text);
  std::vector<std::string> rows;
  size_t first = 0;
  while (first < characters.size()) {
    const size_t begin = characters[first].at;
    const auto end_of = [&](size_t count) {
      return first + count < characters.size() ? characters[first + count].at : text.size();
    };
    // Binary search for the most characters that fit: each measurement blocks on the display thread.
    size_t fits = 1;
    size_t tooMany = characters.size() - first + 1;
    while (fits + 1 < tooMany) {
      const size_t middle = (fits + tooMany) / 2;
      (measure(without_blanks(text.substr(begin, end_of(middle) - begin))) <= width ? fits : tooMany) = middle;
    }
    size_t taken = fits;
    if (first + fits < characters.size()) {
      while (taken > 0 && !may_break_between(characters[first + taken - 1].code, characters[first + taken].code))
        --taken;
      if (taken == 0) taken = fits;
    }
    rows.emplace_back(without_blanks(text.substr(begin, end_of(taken) - begin)));
    first += taken;
  }
  return rows;
}
