#include "player/app/errors.h"

#include <gtest/gtest.h>

TEST(Errors, TheLastFewAreShownAndTheOthersCounted) {
  TErrors errors;
  EXPECT_EQ(errors.Text(), "");
  for (const char* error : {"a", "b", "b", "c"}) errors.Add(error);
  EXPECT_EQ(errors.Text(), "a\nb\nc");
  for (const char* error : {"d", "e"}) errors.Add(error);
  EXPECT_EQ(errors.Text(), "2 earlier messages:\nc\nd\ne");
  EXPECT_TRUE(errors.Remove("d"));
  EXPECT_FALSE(errors.Remove("d"));
  EXPECT_EQ(errors.Text(), "1 earlier message:\nb\nc\ne");
  EXPECT_TRUE(errors.Clear());
  EXPECT_FALSE(errors.Clear());
  EXPECT_EQ(errors.Text(), "");
}

TEST(Errors, ThatOfASongStayedForTheWholeAlbum) {
  TErrors errors;
  errors.Add("no session bus");
  errors.Add("a cannot be played", TErrors::TLife::kOfSong);
  errors.SongIsHeard();
  errors.Add("b is truncated", TErrors::TLife::kOfSong);
  EXPECT_EQ(errors.Text(), "no session bus\na cannot be played\nb is truncated");
  errors.SongIsHeard();
  EXPECT_EQ(errors.Text(), "no session bus\nb is truncated");
  errors.Add("b is truncated", TErrors::TLife::kOfSong);
  errors.SongIsHeard();
  EXPECT_EQ(errors.Text(), "no session bus\nb is truncated") << "it has occurred again";
  errors.SongIsHeard();
  EXPECT_EQ(errors.Text(), "no session bus");
}
