#include "lyrics/find_text.h"

#include <gmock/gmock.h>

using namespace testing;

static std::string marked(const std::string& line, const TFindOptions& options) {
  std::string text = line;
  const auto matches = matches_in(line, options);
  for (auto match = matches.rbegin(); match != matches.rend(); ++match) {
    text.insert(match->begin + match->length, ">");
    text.insert(match->begin, "<");
  }
  return text;
}

TEST(FindText, MatchesAreFoundWholeCharactersApartFromTags) {
  const std::tuple<const char*, TFindOptions, const char*> kSearches[] = {
      {"Love, LOVE", {"love"}, "<Love>, <LOVE>"},
      {"Love, LOVE", {"LOVE", true}, "Love, <LOVE>"},
      {"ÄÖ äö", {"äÖ"}, "<ÄÖ> <äö>"},
      {"ΣΑΣ σας", {"σας"}, "<ΣΑΣ> <σας>"},
      {"愛して愛", {"愛"}, "<愛>して<愛>"},
      {"aaaa", {"aa"}, "<aa><aa>"},
      {"[00:10:00]10 <00:10.50>10", {"10"}, "[00:10:00]<10> <00:10.50><10>"},
      {"[00:10:00]10", {"10", false, false}, "[00:<10>:00]<10>"},
      {"a\xFFz\xFE", {"\xFF"}, "a<\xFF>z\xFE"},
      {"anything", {""}, "anything"},
  };
  for (const auto& [line, options, expected] : kSearches) EXPECT_EQ(marked(line, options), expected);
}

TEST(FindText, ASearchGoesOnAtTheOtherEnd) {
  const std::vector<std::string> lines = {"x one x", "two", "x"};
  const auto place = [&](const TFindPlace& from, bool backward) {
    const auto found = nearest_match(lines, {"x"}, from, backward);
    return found ? std::pair(found->line, found->match.begin) : std::pair(int32{-1}, size_t{0});
  };
  EXPECT_EQ(place({0, 0}, false), std::pair(int32{0}, size_t{0}));
  EXPECT_EQ(place({0, 1}, false), std::pair(int32{0}, size_t{6}));
  EXPECT_EQ(place({0, 7}, false), std::pair(int32{2}, size_t{0}));
  EXPECT_EQ(place({2, 1}, false), std::pair(int32{0}, size_t{0}));
  EXPECT_EQ(place({0, 0}, true), std::pair(int32{2}, size_t{0}));
  EXPECT_EQ(place({1, 0}, true), std::pair(int32{0}, size_t{6}));
  EXPECT_FALSE(nearest_match(lines, {"y"}, {0, 0}, false));
  EXPECT_FALSE(nearest_match({}, {"x"}, {0, 0}, true));
}

TEST(FindText, ReplacingKeepsWhatIsBetween) {
  EXPECT_EQ(replaced("a-b-c", matches_in("a-b-c", {"-"}), "––"), "a––b––c");
  EXPECT_EQ(replaced("abc", {}, "x"), "abc");
}
