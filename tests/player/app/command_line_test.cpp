#include "player/app/command_line.h"

#include <gtest/gtest.h>

namespace {

TCommandLine parse(std::vector<const char*> words) {
  words.insert(words.begin(), "sonivo");
  return parse_command_line(static_cast<int>(words.size()), words.data());
}

} // namespace

TEST(CommandLine, TellsSongsFromOptions) {
  const TCommandLine line =
      parse({"--paused", "--new", "--source", "vlc", "a.mp3", "--edit", "a.lrc", "--", "--odd name.mp3"});
  EXPECT_TRUE(line.startsPaused);
  EXPECT_TRUE(line.isAnother);
  EXPECT_EQ(line.source, "vlc");
  EXPECT_EQ(line.lyrics, "a.lrc");
  EXPECT_EQ(line.songs, (std::vector<std::string>{"a.mp3", "--odd name.mp3"}));
  EXPECT_TRUE(line.text.empty());
}

TEST(CommandLine, SaysWhatItDoesNotUnderstand) {
  EXPECT_TRUE(parse({"--what"}).error);
  EXPECT_TRUE(parse({"--edit"}).error) << "without its file";
  EXPECT_FALSE(parse({"--help"}).error);
  EXPECT_FALSE(parse({"--help"}).text.empty());
}
