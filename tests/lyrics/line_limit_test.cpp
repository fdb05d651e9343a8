#include "lyrics/line_limit.h"

#include "lyrics/lyrics_file.h"
#include "tests/support/scratch_folder.h"

#include <gtest/gtest.h>

namespace {

std::string lines_of(const std::string& lineEnd, long count) {
  std::string bytes;
  for (long i = 0; i < count; ++i) bytes += lineEnd;
  return bytes;
}

} // namespace

TEST(LineLimit, CountsTheLinesThatReadingWouldMake) {
  const struct {
    const char* name;
    std::string bytes;
    bool isTooLong;
  } rows[] = {
      {"as many as there may be", lines_of("\n", kMostLines), false},
      {"one more", lines_of("\n", kMostLines + 1), true},
      {"CR", lines_of("\r", kMostLines + 1), true},
      {"CR LF", lines_of("\r\n", kMostLines), false},
      {"CR LF, one more", lines_of("\r\n", kMostLines + 1), true},
      {"one long line", std::string(3 * kMostLines, 'x'), false},
      {"after a NUL", "a\n" + std::string(1, '\0') + lines_of("\n", kMostLines + 1), false},
  };
  const ScratchFolder folder;
  for (const auto& row : rows) {
    EXPECT_EQ(has_too_many_lines(row.bytes), row.isTooLong) << row.name;
    entry_ref ref;
    ASSERT_EQ(get_ref_for_path(folder.Write("a.lrc", row.bytes).c_str(), &ref), B_OK);
    EXPECT_EQ(has_too_many_lines(ref), row.isTooLong) << row.name;
    if (row.isTooLong) continue;
    std::list<std::string> lines;
    long crType = 0;
    long encoding = 0;
    ASSERT_TRUE(load_lyrics_as(kDetectEncoding, ref, &lines, &crType, &encoding));
    EXPECT_LE(lines.size(), static_cast<size_t>(kMostLines)) << row.name;
  }
}
