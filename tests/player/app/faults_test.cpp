#include "player/app/faults.h"

#include <gtest/gtest.h>

TEST(Faults, TheLastFewAreShownAndTheOthersCounted) {
  TFaults faults;
  EXPECT_EQ(faults.Text(), "");
  for (const char* fault : {"a", "b", "b", "c"}) faults.Add(fault);
  EXPECT_EQ(faults.Text(), "a\nb\nc");
  for (const char* fault : {"d", "e"}) faults.Add(fault);
  EXPECT_EQ(faults.Text(), "2 earlier messages:\nc\nd\ne");
  EXPECT_TRUE(faults.Clear());
  EXPECT_FALSE(faults.Clear());
  EXPECT_EQ(faults.Text(), "");
}
