#include "player/sound/click_filter.h"

#include "tests/support/testing.h"

TEST(ClickFilter, FindsTheLatestTagByHalving) {
  EXPECT_EQ(click_filter({}), "");
  EXPECT_EQ(click_filter({-20, -10}), "") << "before the song";
  const std::string filter = click_filter({-10, 5, 1050, 61000});
  EXPECT_NE(filter.find("st(0,if(lt(t,0.005),1,t-if(lt(t,1.050),0.005,if(lt(t,61.000),1.050,61.000))))"),
            std::string::npos)
      << filter;
}

TEST(ClickFilter, HasABoundHoweverManyTagsThereAre) {
  std::vector<int32> timesMs(20000);
  std::iota(timesMs.begin(), timesMs.end(), 0);
  const std::string filter = click_filter(timesMs);
  EXPECT_EQ(std::ranges::count(filter, 't'),
            std::ranges::count(click_filter({timesMs.begin(), timesMs.begin() + kMostClicks}), 't'));
}
