#include "player/model/info_record.h"

#include "player/sound/speed_bias.h"

#include <gtest/gtest.h>

TEST(InfoRecord, TitlesAreCutBetweenCharacters) {
  TInfoRecord record;
  set_title(&record, "a longer title that was there before");
  std::string title;
  for (int i = 0; i < 50; ++i) title += "語";
  set_title(&record, title);
  EXPECT_EQ(std::string(record.title).size(), 111U);
  EXPECT_EQ(record.title, cut_title(title));
  EXPECT_EQ(cut_title("x" + title).size(), 109U);
  EXPECT_EQ(cut_title(std::string("a\0b", 3)), "a");
  set_title(&record, "short");
  EXPECT_STREQ(record.title, "short");
  EXPECT_EQ(record.title[50], '\0') << "nothing of the old one is left behind";
}

TEST(SpeedBias, IsMeasuredAndStraightBetween) {
  EXPECT_EQ(speed_bias_ms(1.0), 0);
  EXPECT_NEAR(speed_bias_ms(1.375), (17.4 + 29.5) / 2, 1e-9);
  EXPECT_LT(speed_bias_ms(0.25), speed_bias_ms(0.5));
}
