#include "lyrics/proposal.h"

#include "tests/support/testing.h"

using namespace testing;

namespace {

using TTags = std::vector<std::pair<int32, int32>>;

constexpr int32 kLines = 20;

/** A line every three seconds, with weak onsets of a rhythm between the lines. */
std::vector<TOnset> onsets_of_song() {
  std::vector<TOnset> onsets;
  for (int32 i = 0; i < kLines; ++i) {
    const int32 lineMs = 5000 + 3000 * i;
    onsets.push_back({lineMs, 180});
    for (int32 beat = 1; beat < 7; ++beat) onsets.push_back({lineMs + 413 * beat, 25});
  }
  return onsets;
}

/** The lines' tags, late by that much, a little more or less. */
TTags stamps(int32 latenessMs) {
  constexpr int32 kJitterMs[] = {-50, 10, 30, -20, 0, 60, -30, 20, -10, 40};
  TTags tags;
  for (int32 i = 0; i < kLines; ++i) tags.emplace_back(i, 5000 + 3000 * i + latenessMs + kJitterMs[i % 10]);
  return tags;
}

} // namespace

TEST(ProposeTags, LateStampsAreMovedToWhereTheLinesStart) {
  for (const int32 latenessMs : {60, 120, 220}) {
    for (const std::optional<int32> known : {std::optional(latenessMs), std::optional<int32>()}) {
      const auto proposals = propose_tags(stamps(latenessMs), onsets_of_song(), known);
      EXPECT_GE(proposals.size(), 17U) << latenessMs;
      for (const TProposedTag& one : proposals) EXPECT_EQ(one.toMs, 5000 + 3000 * one.line) << latenessMs;
    }
  }
}

TEST(ProposeTags, WhatIsRightAlreadyOrCannotBeToldIsLeftAlone) {
  TTags right = stamps(0);
  for (auto& [line, tagMs] : right) tagMs = 5000 + 3000 * line + (line % 2 == 0 ? 4 : -4);
  EXPECT_THAT(propose_tags(right, onsets_of_song(), std::nullopt), IsEmpty());
  EXPECT_THAT(propose_tags(stamps(120), {}, 120), IsEmpty()) << "no onsets";
  EXPECT_THAT(propose_tags({}, onsets_of_song(), 120), IsEmpty());
  const TTags few(right.begin(), right.begin() + 5);
  EXPECT_THAT(propose_tags(few, onsets_of_song(), std::nullopt), IsEmpty()) << "too few to tell how late they are";
  EXPECT_THAT(propose_tags(right, onsets_of_song(), 120), IsEmpty()) << "stamped by somebody who is not late";
  const TTags late = stamps(120);
  EXPECT_GE(propose_tags({late.begin(), late.begin() + 5}, onsets_of_song(), 120).size(), 4U) << "the user's are known";
  TTags elsewhere = stamps(120);
  elsewhere[3].second += 1300;
  const auto proposals = propose_tags(elsewhere, onsets_of_song(), std::nullopt);
  EXPECT_FALSE(std::ranges::any_of(proposals, [](const TProposedTag& one) { return one.line == 3; }));
  EXPECT_GE(proposals.size(), 16U);
}

TEST(ProposeTags, TwoOnsetsEquallyNearProposeNothing) {
  std::vector<TOnset> onsets = onsets_of_song();
  onsets.insert(onsets.begin() + 1, {5060, 180});
  TTags tags = stamps(120);
  tags[0].second = 5150; // 120 ms after the middle of the two
  const auto proposals = propose_tags(tags, onsets, 120);
  ASSERT_FALSE(proposals.empty());
  EXPECT_NE(proposals.front().line, 0);
}

TEST(ProposeTags, WhicheverAreAcceptedNoTagPassesAnother) {
  TTags tags = stamps(120);
  tags.emplace_back(kLines, tags[2].second);          // a translation with the same time
  tags.emplace_back(kLines + 1, tags[5].second - 90); // closer to the line than that is late
  const auto proposals = propose_tags(tags, onsets_of_song(), 120);
  const auto to = [&proposals](int32 line) {
    const auto found = std::ranges::find(proposals, line, &TProposedTag::line);
    return found == proposals.end() ? -1 : found->toMs;
  };
  EXPECT_EQ(to(2), 11000);
  EXPECT_EQ(to(kLines), 11000) << "equal tags move together";
  EXPECT_EQ(to(5), -1) << "the line before it would be passed";
}
