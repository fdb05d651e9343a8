#include "lyrics/line_limit.h"

#include "lyrics/lyrics_file.h"
#include "tests/support/messages.h"

namespace {

std::string lines_of(const std::string& lineEnd, long count) {
  std::string bytes;
  for (long i = 0; i < count; ++i) bytes += lineEnd;
  return bytes;
}

} // namespace

TEST(LineLimit, CountsTheLinesThatReadingWouldMake) {
  const std::tuple<const char*, std::string, bool> rows[] = {
      {"as many as there may be", lines_of("\n", kMostLines), false},
      {"one more", lines_of("\n", kMostLines + 1), true},
      {"CR", lines_of("\r", kMostLines + 1), true},
      {"CR LF", lines_of("\r\n", kMostLines), false},
      {"CR LF, one more", lines_of("\r\n", kMostLines + 1), true},
      {"one long line", std::string(3 * kMostLines, 'x'), false},
      {"after a NUL", "a\n" + std::string(1, '\0') + lines_of("\n", 2 * kMostLines), false},
  };
  const ScratchFolder folder;
  for (const auto& [name, bytes, isTooLong] : rows) {
    EXPECT_EQ(has_too_many_lines(bytes), isTooLong) << name;
    const entry_ref ref = ref_of(folder.Write("a.lrc", bytes));
    EXPECT_EQ(has_too_many_lines(ref), isTooLong) << name;
    if (isTooLong) continue;
    std::list<std::string> lines;
    long crType = 0;
    long encoding = 0;
    ASSERT_TRUE(load_lyrics_as(kDetectEncoding, ref, &lines, &crType, &encoding));
    EXPECT_LE(lines.size(), static_cast<size_t>(kMostLines)) << name;
  }
}
