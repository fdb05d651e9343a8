#include "songtags/song_lyrics.h"
#include "songtags/song_text.h"

#include <gtest/gtest.h>

namespace {

using TLines = std::list<std::string>;

struct Form {
  TLines lines;
  std::string text;
  std::string plain;
  std::string synced;
  TLines reopened;
};

TLyricsInSong some_lyrics() {
  return {"1.2.3.4.5.", TSongFormat::kId3, {{TLyricsPlace::kUslt, "a\nb"}, {TLyricsPlace::kSylt, "[00:01.00]a"}}};
}

} // namespace

TEST(SongText, EachFormOfLyricsBecomesWhatSongsHoldAndComesBack) {
  const Form table[] = {
      {{"[00:01:50]a", "[00:03]b"},
       "[00:01.50]a\n[00:03.00]b",
       "a\nb",
       "[00:01.50]a\n[00:03.00]b",
       {"[00:01:50]a", "[00:03:00]b"}},
      {{"[00:09][00:01]twice", "[00:02:01]"},
       "[00:09.00][00:01.00]twice\n[00:02.01]",
       "twice",
       "[00:01.00]twice\n[00:02.01]\n[00:09.00]twice",
       {"[00:09:00][00:01:00]twice", "[00:02:01]"}},
      {{"[ti:T]", "[offset:500]", "[00:00:20]x", "[00:01:00]y"},
       "[ti:T]\n[offset:500]\n[00:00.20]x\n[00:01.00]y",
       "x\ny",
       "[00:00.00]x\n[00:00.50]y",
       {"[ti:T]", "[offset:500]", "[00:00:20]x", "[00:01:00]y"}},
      {{"no", "times", "", ""}, "no\ntimes", "no\ntimes", "", {"no", "times"}},
      {{"bad \xFF"
        "byte"},
       "bad \xEF\xBF\xBD"
       "byte",
       "bad \xEF\xBF\xBD"
       "byte",
       "",
       {"bad \xEF\xBF\xBD"
        "byte"}},
  };
  for (const Form& form : table) {
    const std::string text = text_for_song(form.lines);
    EXPECT_EQ(text, form.text);
    EXPECT_EQ(plain_text(text), form.plain);
    EXPECT_EQ(synced_text(synced_lines(text)), form.synced);
    EXPECT_EQ(document_lines(text), form.reopened);
  }
  EXPECT_EQ(document_lines("[00:01.50]a <00:02.00>b"), TLines{"[00:01:50]a <00:02.00>b"}) << "times of words stay";
  EXPECT_EQ(normalized_text(std::string("a\r\nb\rc\n\n\0d", 11)), "a\nb\nc");
}

TEST(SongLyrics, TimedCompleteLyricsArePreferred) {
  TLyricsInSong song{"", TSongFormat::kId3, {{TLyricsPlace::kUslt, "a"}, {TLyricsPlace::kSylt, "[00:01.00]a"}}};
  EXPECT_EQ(best_lyrics(song)->place, TLyricsPlace::kSylt);
  song.found[0].text = "[00:01.00]a";
  EXPECT_EQ(best_lyrics(song)->place, TLyricsPlace::kUslt);
  song.found.clear();
  EXPECT_EQ(best_lyrics(song), nullptr);
}

TEST(SongLyrics, OnlyAWholeAnswerOfTheProgramIsAccepted) {
  const std::string whole = song_lyrics_bytes(some_lyrics());
  const auto read = parse_song_lyrics(whole);
  ASSERT_TRUE(read);
  EXPECT_EQ(read->found, some_lyrics().found);
  EXPECT_EQ(read->state, some_lyrics().state);
  const size_t noLyrics = song_lyrics_bytes({some_lyrics().state, TSongFormat::kId3, {}}).size();
  const size_t oneLyrics = noLyrics + 1 + 4 + 3;
  for (size_t size = 0; size < whole.size(); ++size)
    EXPECT_EQ(parse_song_lyrics(whole.substr(0, size)).has_value(), size == noLyrics || size == oneLyrics) << size;
  const auto refused = [](const TLyricsInSong& song) { return !parse_song_lyrics(song_lyrics_bytes(song)); };
  EXPECT_TRUE(refused({std::string(121, 'x'), TSongFormat::kId3, {}}));
  EXPECT_TRUE(refused({"", static_cast<TSongFormat>(4), {}}));
  EXPECT_TRUE(refused({"", TSongFormat::kId3, {{static_cast<TLyricsPlace>(5), "a"}}}));
  EXPECT_TRUE(refused({"", TSongFormat::kId3, {{TLyricsPlace::kUslt, "a"}, {TLyricsPlace::kUslt, "b"}}}));
  EXPECT_TRUE(refused({"", TSongFormat::kId3, {{TLyricsPlace::kUslt, "not \xFF UTF-8"}}}));
  EXPECT_TRUE(refused({"", TSongFormat::kId3, {{TLyricsPlace::kUslt, std::string(kMostLyricsBytes + 1, 'x')}}}));
}
