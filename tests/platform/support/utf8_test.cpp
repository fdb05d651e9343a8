#include "platform/support/utf8.h"

#include <gtest/gtest.h>

using namespace std::literals;

TEST(Utf8, DecodesOneCharacterAndDelimitsAMalformedSequence) {
  const struct {
    std::string_view text;
    char32_t code;
    size_t length;
  } rows[] = {{"a\xc3"sv, 'a', 1},
              {"\0x"sv, 0, 1},
              {"éx"sv, 0xE9, 2},
              {"日本"sv, 0x65E5, 3},
              {"😀"sv, 0x1F600, 4},
              {"\x80\x80"sv, kMalformedUtf8, 1},
              {"\xc1\x81"sv, kMalformedUtf8, 1},
              {"\xe3\x81z"sv, kMalformedUtf8, 2},
              {"\xe3\x81"sv, kMalformedUtf8, 2},
              {"\xe0\x80\x80"sv, kMalformedUtf8, 3},
              {"\xed\xa0\x80"sv, kMalformedUtf8, 3},
              {"\xf4\x90\x80\x80"sv, kMalformedUtf8, 4},
              {"\xf5\x80"sv, kMalformedUtf8, 1}};
  for (const auto& row : rows) {
    EXPECT_EQ(first_character(row.text).code, row.code) << row.text;
    EXPECT_EQ(first_character(row.text).length, row.length) << row.text;
  }
}

TEST(Utf8, TruncatesAtACharacterBoundary) {
  for (const auto& [maxBytes, kept] : {std::pair{0, ""}, {1, "a"}, {3, "a"}, {4, "a日"}, {6, "a日"}, {7, "a日本"}})
    EXPECT_EQ(truncated_utf8("a日本"sv, static_cast<size_t>(maxBytes)), kept);
  EXPECT_EQ(truncated_utf8(std::string(100, '\x80'), 50).size(), 47U) << "bytes that are not UTF-8 are not all lost";
}
