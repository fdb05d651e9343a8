#include "player/model/playing_order.h"

#include "tests/support/songs.h"
#include "tests/support/testing.h"

using namespace testing;

namespace {

struct PlayingOrder : testing::TestWithParam<unsigned> {
  PlayingOrder() {
    fSongs.Insert(songs_of({"a", "b", "c", "d", "e", "f"}), -1);
    fSongs.SetCurrent(2);
  }
  void Play(int32 index) {
    if (fSongs.SetCurrent(index)) fOrder.SongBegins();
  }
  /** Plays to the end of all songs, or as many; returns what was heard. */
  std::string Hear(int most) {
    std::string heard;
    for (int i = 0; i < most; ++i) {
      const int32 next = fOrder.SongAfterEnd();
      if (next < 0) return heard + "|";
      Play(next);
      heard += fSongs.CurrentSong()->path;
    }
    return heard;
  }
  static std::string Sorted(std::string text) {
    std::ranges::sort(text);
    return text;
  }
  TPlaylist fSongs;
  TPlayingOrder fOrder{&fSongs, GetParam()};
};

} // namespace

TEST_P(PlayingOrder, ShuffledEachRoundHasEverySongOnce) {
  fOrder.SetModes({.shuffles = true});
  EXPECT_EQ(Sorted(Hear(9)), "abdef|") << "c is current";
  fOrder.SetModes({.shuffles = true, .repeat = TRepeat::kList});
  for (int round = 0; round < 3; ++round) EXPECT_EQ(Sorted(Hear(6)), "abcdef");
  const std::string heard = Hear(3);
  Play(fOrder.SkipTarget(-1));
  EXPECT_EQ(fSongs.CurrentSong()->path, heard.substr(1, 1)) << "back to the one before";
  EXPECT_EQ(Hear(1), heard.substr(2)) << "and on again";
  for (int32 row = 0; row < fSongs.Count(); ++row) fSongs.Edit(row)->error = "it is missing";
  for (const bool shuffles : {false, true}) {
    fOrder.SetModes({shuffles, TRepeat::kList, false});
    EXPECT_EQ(fOrder.SongAfterEnd(), -1) << "a list of bad songs comes to an end";
  }
}

TEST_P(PlayingOrder, ShuffledSongsThatComeAndGoWhilePlaying) {
  fOrder.SetModes({.shuffles = true});
  const std::string first = Hear(2) + "c";
  const auto picked = static_cast<int32>(std::string("abcdef").find_first_not_of(first));
  const std::string before = fSongs.CurrentSong()->path;
  Play(picked);
  EXPECT_EQ(fSongs.At(fOrder.SkipTarget(-1))->path, before) << "picked out of turn: back leads to the one before";
  fSongs.Insert(songs_of({"x", "y"}), 0);
  fSongs.Remove({fSongs.At(fSongs.Find(before))->id});
  const std::string rest = Hear(9);
  EXPECT_EQ(rest.size(), 5U) << rest;
  EXPECT_THAT(rest, AllOf(HasSubstr("x"), HasSubstr("y"), EndsWith("|")));
  fSongs.Clear();
  EXPECT_EQ(fOrder.SongAfterEnd(), -1);
  fSongs.Insert(songs_of({"m", "n"}), 0);
  EXPECT_EQ(Sorted(Hear(9)), "mn|");
}

INSTANTIATE_TEST_SUITE_P(Dice, PlayingOrder, testing::Values(1U, 7U, 42U));
