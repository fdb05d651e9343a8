/** Parts of a song: what a message may ask for, and the steps by which another player plays them. */

#include "player/model/song_part.h"

#include "plugin/message_codes.h"
#include "tests/support/messages.h"

namespace {

using TPart = std::optional<TSongPart>;

template <typename... Fields>
TPart part_of(const Fields&... fields) {
  return song_part_in(message_of(kMsgHostPlayPart, fields...));
}

} // namespace

TEST(SongPart, OnlyWholeMessagesOfTheRightTypesAreTaken) {
  EXPECT_EQ(part_of("FromMs", 100, "ToMs", 900), TPart({100, 900, false}));
  EXPECT_EQ(part_of("FromMs", 100, "ToMs", 900, "Loop", true), TPart({100, 900, true}));
  EXPECT_EQ(part_of("FromMs", 100), TPart({100, {}, false}));
  EXPECT_EQ(part_of("ToMs", 900), TPart());
  EXPECT_EQ(part_of("FromMs", std::string("100")), TPart());
  EXPECT_EQ(part_of("FromMs", 100, "ToMs", std::string("900")), TPart()) << "not without an end";
  EXPECT_EQ(part_of("FromMs", 100, "ToMs", 900, "Loop", 1), TPart());
}

TEST(SongPart, StaysWithinTheSong) {
  const struct {
    TSongPart wanted;
    TPart bounded;
  } kCases[] = {
      {{1000, 2000, true}, TSongPart{1000, 2000, true}},
      {{1000, {}, false}, TSongPart{1000, {}, false}},
      {{1000, {}, true}, TSongPart{1000, 60000, true}},
      {{-500, 2000, false}, TSongPart{0, 2000, false}},
      {{INT_MIN, INT_MAX, false}, TSongPart{0, 60000, false}},
      {{59000, 61000, false}, TSongPart{59000, 60000, false}},
      {{2000, 1000, true}, {}},       // swapped
      {{1000, 1049, true}, {}},       // too short to loop over
      {{-2000, -1000, false}, {}},    // before the song
      {{70000, 80000, false}, {}},    // after it
      {{59960, {}, false}, {}},       // nothing left to hear
      {{INT_MAX, INT_MIN, false}, {}} // no overflow
  };
  for (const auto& [wanted, bounded] : kCases)
    EXPECT_EQ(bounded_part(wanted, 60000), bounded) << wanted.fromMs << ' ' << wanted.toMs.value_or(-1);
  EXPECT_EQ(bounded_part({0, 1000}, -1), TPart()) << "a stream without a length";
}

TEST(SongPart, AnotherPlayerIsWatchedMoreOftenTowardsTheEnd) {
  using enum TPartStep::TAction;
  const TSongPart once{1000, 3000, false};
  const TSongPart loop{1000, 3000, true};
  EXPECT_EQ(next_part_step(once, 1000, 100), (TPartStep{kWait, 200000}));
  EXPECT_EQ(next_part_step(once, 2950, 100), (TPartStep{kWait, 50000}));
  EXPECT_EQ(next_part_step(once, 2950, 50), (TPartStep{kWait, 100000}));
  EXPECT_EQ(next_part_step(once, 3000, 0), TPartStep{kFinish});
  EXPECT_EQ(next_part_step(loop, 3010, 100), TPartStep{kRepeat});
  EXPECT_EQ(next_part_step(loop, 5000, 100), TPartStep{kAbandon}) << "its user has sought";
  EXPECT_EQ(next_part_step({5000, 6000, true}, 100, 100), TPartStep{kAbandon});
}
