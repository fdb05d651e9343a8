#include "player/model/player_choices.h"

#include "player/model/song_tags.h"
#include "tests/support/messages.h"

#include <gtest/gtest.h>

TEST(PlayerChoices, AreTakenFieldByFieldWithinTheirBounds) {
  TPlayerChoices choices;
  choices.modes = {.shuffles = true, .repeat = TRepeat::kList};
  choices.sound = {TReplayGain::kAlbum, -30, true, {1, -2, 3}, false, "pulse/headphones"};
  choices.keepsAwake = true;
  BMessage archive;
  ASSERT_TRUE(archive_choices(choices, &archive));
  TPlayerChoices back;
  EXPECT_TRUE(take_choices(archive, &back));
  EXPECT_EQ(back, choices);
  for (const BMessage& bad : {message_of('x', choice::kShuffle, 1, choice::kBalance, 50),
                              message_of('x', choice::kRepeat, 3, choice::kBalance, 50),
                              message_of('x', choice::kReplayGain, -1, choice::kBalance, 50),
                              message_of('x', choice::kBand, 13, choice::kBalance, 50),
                              message_of('x', choice::kDevice, std::string(600, 'x'), choice::kBalance, 50)}) {
    TPlayerChoices taken = choices;
    EXPECT_FALSE(take_choices(bad, &taken));
    EXPECT_EQ(taken.sound.balancePercent, 50) << "the other fields are read";
    taken.sound.balancePercent = choices.sound.balancePercent;
    EXPECT_EQ(taken, choices);
  }
}

TEST(PlayerChoices, TrackNumbersOfTagsAreNumbersOrNothing) {
  const struct {
    const char* tag;
    int32 number;
  } kCases[] = {{"3", 3},  {"03/12", 3},   {"", 0},      {"-3", 0},
                {"A1", 0}, {"3 of 12", 0}, {"99999", 0}, {"99999999999", 0}};
  for (const auto& one : kCases) EXPECT_EQ(track_number(one.tag), one.number) << one.tag;
}
