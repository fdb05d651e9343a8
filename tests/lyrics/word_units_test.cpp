#include "lyrics/word_units.h"

#include "tests/support/testing.h"

namespace {

std::string with_bars(std::string text) {
  const std::vector<size_t> starts = unit_starts(text);
  for (size_t i = starts.size(); i-- > 1;) text.insert(starts[i], "|");
  return text;
}

std::string without_bars(std::string text) {
  std::erase(text, '|');
  return text;
}

} // namespace

TEST(WordUnits, LinesOfSixLanguagesAreCutAsTheTableSays) {
  std::ifstream table(SOURCE_FOLDER "/tests/lyrics/units_table.txt");
  int rows = 0;
  for (std::string row; std::getline(table, row);) {
    if (row.empty() || row[0] == '#') continue;
    const std::string wanted = row.substr(row.find('\t', 2) + 1);
    const std::string cut = with_bars(without_bars(wanted));
    if (row[0] == '-')
      EXPECT_EQ(cut, wanted);
    else if (cut != wanted)
      std::cout << "differs from the advice: " << cut << " (" << wanted << ")\n";
    ++rows;
  }
  EXPECT_GE(rows, 200);
}

TEST(WordUnits, TheUsersOwnCutsAndOddTextAreCutWithoutFault) {
  const std::pair<const char*, const char*> rows[] = {
      {"New \u2060York |sleeps", "New \u2060York |sleeps"},
      {"love\u200b|ly |days", "love\u200b|ly |days"},
      {"し\u200b|ゃ", "し\u200b|ゃ"},
      {"愛\u2060情|論", "愛\u2060情|論"},
      {"end\u200b", "end\u200b"},
      {"\u200b", "\u200b"},
      {"夜\x93\xff|に", "夜|\x93\xff|に"},
      {"彼|は|\"愛\"|と", "彼|は|\"愛\"|と"},
  };
  for (const auto& [marked, wanted] : rows) EXPECT_EQ(with_bars(without_bars(marked)), wanted);
  EXPECT_EQ(unit_starts("..."), std::vector<size_t>{0}) << "signs alone are one unit";
  EXPECT_TRUE(unit_starts("").empty());
  EXPECT_TRUE(unit_starts(" \u3000\t").empty());
  EXPECT_EQ(without_unit_marks("New \u2060York love\u200bly"), "New York lovely");
  EXPECT_EQ(caret_stops("e\u0301a夜"), (std::vector<size_t>{0, 3, 4, 7}));
}
