#include "lyrics/word_units.h"

#include "platform/support/types.h"
#include "tests/support/testing.h"

namespace {

void append_utf8(char32_t code, std::string* text) {
  const auto add = [text](char32_t byte) { text->push_back(static_cast<char>(byte)); };
  if (code < 0x80) return add(code);
  if (code < 0x800) {
    add(0xC0 | code >> 6);
  } else {
    add(0xE0 | code >> 12);
    add(0x80 | (code >> 6 & 0x3F));
  }
  add(0x80 | (code & 0x3F));
}

/** The third column of a row of the table. */
std::string unescaped(const std::string& column) {
  std::string text;
  for (size_t at = 0; at < column.size(); ++at) {
    if (column.compare(at, 2, "\\t") == 0) {
      text += '\t';
      at += 1;
    } else if (column.compare(at, 2, "\\u") == 0) {
      append_utf8(static_cast<char32_t>(std::stoul(column.substr(at + 2, 4), nullptr, 16)), &text);
      at += 5;
    } else {
      text += column[at];
    }
  }
  return text;
}

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
    const std::string wanted = unescaped(row.substr(row.find('\t', 2) + 1));
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
