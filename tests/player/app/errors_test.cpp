#include "player/app/errors.h"

#include <gtest/gtest.h>

TEST(Errors, TheLastFewAreShownAndTheOthersCounted) {
  TErrors errors;
  EXPECT_EQ(errors.Text(), "");
  for (const char* error : {"a", "b", "b", "c"}) errors.Add(error);
  EXPECT_EQ(errors.Text(), "a\nb\nc");
  for (const char* error : {"d", "e"}) errors.Add(error);
  EXPECT_EQ(errors.Text(), "2 earlier messages:\nc\nd\ne");
  EXPECT_TRUE(errors.Clear());
  EXPECT_FALSE(errors.Clear());
  EXPECT_EQ(errors.Text(), "");
}
