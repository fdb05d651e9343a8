#include "lyrics/file_content.h"

#include "tests/support/testing.h"

using namespace std::string_literals;

TEST(FileContent, LyricsInEveryEncodingAreTextAndSongsPicturesAndProgramsAreNot) {
  const struct {
    std::string bytes;
    TFileContent content;
  } rows[] = {
      {"", TFileContent::kText},
      {"[00:01]歌\r\n\f\v", TFileContent::kText},
      {"\xEF\xBB\xBF[ti:x]", TFileContent::kText},
      {"\x89\xCC\x8E\x8C\n", TFileContent::kText},
      {"\x1B$B2N\x1B(B\n\x1B(I1\x1B(B\n", TFileContent::kText},
      {std::string(40, '\x1A'), TFileContent::kText}, // lost characters of an earlier save
      {"a\n"s + std::string(5000, '\0'), TFileContent::kText},
      {"one\0two\0three\n"s, TFileContent::kText},
      {"ID3\x04\0\0"s, TFileContent::kSong},
      {"\xFF\xFB\x90\x64", TFileContent::kSong},
      {"\xFF\xF1\x50\x80", TFileContent::kSong},
      {"RIFF\x10\0\0\0WAVEfmt "s, TFileContent::kSong},
      {"\0\0\0\x20"s + "ftypM4A ", TFileContent::kSong},
      {"\x89PNG\r\n\x1A\n", TFileContent::kOther},
      {"\xFF\xD8\xFF\xE0", TFileContent::kOther},
      {"\xFF\xFE[\0"s, TFileContent::kOther},
      {"\x7F"
       "ELF\2\1\1",
       TFileContent::kOther},
  };
  for (const auto& row : rows) EXPECT_EQ(content_of(row.bytes), row.content) << testing::PrintToString(row.bytes);
  std::mt19937 random(3); // NOLINT: the same bytes in every run
  std::string noise(4000, '\0');
  for (char& byte : noise) byte = static_cast<char>(random());
  EXPECT_EQ(content_of(noise), TFileContent::kOther);
  const ScratchFolder folder;
  EXPECT_EQ(content_of_file(folder.Write("a.lrc", noise)), TFileContent::kOther);
  EXPECT_EQ(content_of_file(folder.File("missing")), TFileContent::kText);
}
