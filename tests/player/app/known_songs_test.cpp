#include "player/app/known_songs.h"

#include "tests/support/scratch_folder.h"
#include "tests/support/songs.h"

#include <gtest/gtest.h>

TEST(KnownSongs, ASongThatTheUserRemovedDoesNotComeBackUnlessItWasDeletedItself) {
  const ScratchFolder folder;
  const std::string odd = "/m/sub/#1\n\xff.mp3";
  const TSongs songs = songs_of({"/m/a.mp3", odd, "/mm/c.mp3"});
  {
    TKnownSongs known;
    known.Load(folder.File("new/Watched.m3u8"));
    EXPECT_EQ(known.NewOf(songs).size(), 3U);
    EXPECT_TRUE(known.Save());
  }
  const auto count_new = [&](const auto& change) {
    TKnownSongs known;
    known.Load(folder.File("new/Watched.m3u8"));
    change(known);
    return known.NewOf(songs).size();
  };
  EXPECT_EQ(count_new([](TKnownSongs&) {}), 0U) << "kept";
  EXPECT_EQ(count_new([](TKnownSongs& known) { known.Forget({"/m/a.mp3", "/m/x.mp3"}); }), 1U);
  EXPECT_EQ(count_new([](TKnownSongs& known) { known.ForgetFolder("/m"); }), 2U);
  EXPECT_EQ(count_new([](TKnownSongs& known) { known.KeepOnly("/m", songs_of({"/m/a.mp3"})); }), 1U);
}
