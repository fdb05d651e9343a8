#include "player/model/player_choices.h"

#include "player/model/song_tags.h"
#include "tests/support/messages.h"

#include <gtest/gtest.h>

TEST(PlayerChoices, AreTakenFieldByFieldWithinTheirBounds) {
  TPlayerChoices choices;
  choices.modes = {.shuffles = true, .repeat = TRepeat::kList};
  choices.sound = {TReplayGain::kAlbum, -30, true, {1, -2, 3}, false, "pulse/headphones"};
  choices.keepsAwake = true;
  choices.columns = {{true, true, true, false, true, false}, {20, 40, 300, 100, 90, 70}};
  choices.watchedFolders = {"/music", "/media/disk"};
  BMessage archive;
  ASSERT_TRUE(archive_choices(choices, &archive));
  TPlayerChoices back;
  EXPECT_TRUE(take_choices(archive, &back));
  EXPECT_EQ(back, choices);
  for (const BMessage& bad : {message_of('x', choice::kShuffle, 1, choice::kBalance, 50),
                              message_of('x', choice::kRepeat, 3, choice::kBalance, 50),
                              message_of('x', choice::kReplayGain, -1, choice::kBalance, 50),
                              message_of('x', choice::kBand, 13, choice::kBalance, 50),
                              message_of('x', choice::kWatched, "relative", choice::kBalance, 50),
                              message_of('x', choice::kWidth, -1, choice::kBalance, 50),
                              message_of('x', choice::kDevice, std::string(600, 'x'), choice::kBalance, 50)}) {
    TPlayerChoices taken = choices;
    EXPECT_FALSE(take_choices(bad, &taken));
    EXPECT_EQ(taken.sound.balancePercent, 50) << "the other fields are read";
    taken.sound.balancePercent = choices.sound.balancePercent;
    EXPECT_EQ(taken, choices);
  }
}

TEST(PlayerChoices, NoWatchedFolderIsPartOfAnother) {
  const TWatchedFolders folders{"/a/b", "/a/bc"};
  EXPECT_EQ(with_folder(folders, "/a/b/c"), folders);
  EXPECT_EQ(with_folder(folders, "/a/bc/"), folders);
  EXPECT_EQ(with_folder(folders, "/a/"), TWatchedFolders{"/a"});
  EXPECT_EQ(with_folder(folders, "/"), TWatchedFolders{"/"});
  EXPECT_EQ(with_folder({"/"}, "/a"), TWatchedFolders{"/"});
  TPlayerChoices choices{.watchedFolders = folders};
  BMessage none;
  ASSERT_TRUE(archive_folders({}, &none));
  EXPECT_TRUE(take_choices(BMessage(), &choices));
  EXPECT_EQ(choices.watchedFolders, folders);
  EXPECT_TRUE(take_choices(none, &choices));
  EXPECT_TRUE(choices.watchedFolders.empty());
}

TEST(PlayerChoices, ColumnsShareTheRoomOfTheList) {
  const TColumnWidths wanted{20, 40, 200, 100, 100, 60};
  const struct {
    std::array<bool, kColumnCount> shown;
    int32 room;
    TColumnWidths widths;
  } kCases[] = {{{true, false, true, true, false, true}, 380, {20, 0, 200, 100, 0, 60}},
                {{true, true, true, true, true, true}, 921, {20, 40, 400, 200, 201, 60}},
                {{true, false, true, false, false, false}, 300, {20, 0, 280, 0, 0, 0}},
                {{true, true, true, true, true, true}, 0, {20, 40, 24, 24, 24, 60}}};
  for (const auto& one : kCases) EXPECT_EQ(fit_columns(wanted, one.shown, one.room), one.widths) << one.room;
  EXPECT_EQ(fit_columns({}, kCases[0].shown, 100)[2], 50) << "whatever was stored, titles are seen";
}

TEST(PlayerChoices, TrackNumbersOfTagsAreNumbersOrNothing) {
  const struct {
    const char* tag;
    int32 number;
  } kCases[] = {{"3", 3},  {"03/12", 3},   {"", 0},      {"-3", 0},
                {"A1", 0}, {"3 of 12", 0}, {"99999", 0}, {"99999999999", 0}};
  for (const auto& one : kCases) EXPECT_EQ(track_number(one.tag), one.number) << one.tag;
}
