#include "player/sound/sound_filters.h"

#include <gtest/gtest.h>

namespace {

TSoundChoices equalized(std::array<int32, 10> bandsDb, int32 balancePercent = 0) {
  TSoundChoices choices;
  choices.isEqualized = true;
  choices.bandsDb = bandsDb;
  choices.balancePercent = balancePercent;
  return choices;
}

} // namespace

TEST(SoundFilters, OnlyWhatIsChosenIsFiltered) {
  TSoundChoices off = equalized({3, 3, 3});
  off.isEqualized = false;
  EXPECT_EQ(sound_filters(off), "") << "the bands are kept while the equalizer is off";
  EXPECT_EQ(sound_filters(equalized({})), "") << "all bands at 0 dB";
  EXPECT_EQ(sound_filters(equalized({0, -3, 0, 0, 6})),
            "lavfi=[volume=-6dB,equalizer=f=62:t=o:w=1:g=-3,equalizer=f=500:t=o:w=1:g=6]");
  EXPECT_EQ(sound_filters(equalized({}, -100)),
            "lavfi=[aformat=channel_layouts=stereo,pan=stereo|c0=1.00*c0|c1=0.00*c1]");
  EXPECT_EQ(sound_filters(equalized({-1}, 5)),
            "lavfi=[equalizer=f=31:t=o:w=1:g=-1,aformat=channel_layouts=stereo,pan=stereo|c0=0.95*c0|c1=1.00*c1]");
}
