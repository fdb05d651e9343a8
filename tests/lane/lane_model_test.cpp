#include "lane/lane_model.h"
#include "lane/lane_overlay.h"
#include "lane/lane_pixels.h"
#include "lane/lane_proposals.h"
#include "tests/support/testing.h"
#include "toolkit/readable_colors.h"

using namespace testing;

namespace {

using Lines = std::vector<std::string>;

std::vector<std::string> after(const Lines& lines, const TLaneMove& move, long offsetMs = 0) {
  const TLinesChange change = lines_moved(lines, move, offsetMs);
  Lines changed = lines;
  std::ranges::copy(change.lines, changed.begin() + change.first);
  return changed;
}

struct Lane {
  explicit Lane(Lines content, int32 row, long offsetMs = 0) : lines(std::move(content)), offset(offsetMs) {
    auto sound = std::make_shared<TSongSound>();
    sound->SetOnsets({{5003, 200}, {12347, 255}, {15000, 90}});
    model.SetSound(sound);
    model.SetLyrics({lines, row, -1, offset});
  }
  /** Drags the chosen marker there; the lines after it. */
  Lines Dragged(int32 toMs, const TLaneDragging& how) {
    model.Grab(*model.Chosen());
    model.DragTo(toMs, how);
    const auto move = model.Drop();
    return move ? after(lines, *move, offset) : lines;
  }

  Lines lines;
  long offset;
  TLaneModel model;
};

const Lines kThree{"[00:10:00]one", "[00:12:00]two [00:12:50]more[00:13:00]", "[00:16:00]three"};

} // namespace

TEST(LaneModel, ADragHoldsThePageAndEndsWithItsLine) {
  Lane lane(kThree, 1);
  lane.model.Grab(*lane.model.Chosen());
  lane.model.DragTo(12300, {});
  lane.model.Follow(16900);
  EXPECT_FALSE(lane.model.Follow(17100)) << "the page does not turn under the mouse";
  lane.model.SetLyrics({lane.lines, 2, -1, 0});
  EXPECT_FALSE(lane.model.Drop().has_value()) << "another line was selected meanwhile";
}

TEST(LaneModel, ShowsTheLineWithASecondOnBothSides) {
  const struct {
    const char* name;
    Lines lines;
    int32 row;
    TLaneRange range;
  } cases[] = {
      {"between neighbours", kThree, 1, {11000, 17000}},
      {"last line", kThree, 2, {15000, 22000}},
      {"last line with an end", {"[00:10:00]a [00:20:00]b[00:21:00]"}, 0, {9000, 22000}},
      {"line of two languages", {"[00:10:00]a", "[00:10:00]b", "[00:14:00]c"}, 0, {9000, 15000}},
      {"line without a tag", {"[00:10:00]a", "b", "[00:14:00]c"}, 1, {9000, 15000}},
      {"line that is sung twice", {"[00:10:00][01:10:00]a", "[00:14:00]b"}, 0, {9000, 15000}},
      {"no tag at all", {"a"}, 0, {-1000, 6000}},
      {"no line", {}, -1, {0, 5000}},
  };
  for (const auto& each : cases) EXPECT_EQ(Lane(each.lines, each.row).model.Range(), each.range) << each.name;
}

TEST(LaneModel, ADragSnapsStopsAtNeighboursAndKeepsTheFormOfTheTag) {
  const struct {
    const char* name;
    Lines lines;
    int32 toMs;
    TLaneDragging how;
    Lines expected; // of the selected second line and those below it
  } cases[] = {
      {"to an onset", kThree, 12300, {false, 60}, {"[00:12:35]two [00:12:50]more[00:13:00]", kThree[2]}},
      {"without snapping", kThree, 12304, {false, 0}, {"[00:12:30]two [00:12:50]more[00:13:00]", kThree[2]}},
      {"to its own word", kThree, 12480, {false, 60}, {"[00:12:50]two [00:12:50]more[00:13:00]", kThree[2]}},
      {"not past its own word", kThree, 14000, {false, 0}, {"[00:12:50]two [00:12:50]more[00:13:00]", kThree[2]}},
      {"not past the line above", kThree, 9000, {false, 0}, {"[00:10:00]two [00:12:50]more[00:13:00]", kThree[2]}},
      {"with all later ones", kThree, 13000, {true, 0}, {"[00:13:00]two [00:13:50]more[00:14:00]", "[00:17:00]three"}},
      {"seconds", {kThree[0], "[00:12]two", kThree[2]}, 13600, {false, 0}, {"[00:14]two", kThree[2]}},
      {"seconds at a neighbour",
       {kThree[0], "[00:12]two", "[00:13:50]"},
       13600,
       {false, 0},
       {"[00:13]two", "[00:13:50]"}},
      {"seconds with hundredths",
       {kThree[0], "[00:12]a", "[00:14]b", "[00:15:10]c"},
       13000,
       {true, 0},
       {"[00:13]a", "[00:15]b", "[00:16:10]c"}},
      {"first word's own tag",
       {kThree[0], "[00:12:00]<00:12.00>a <00:13.00>b"},
       12500,
       {false, 0},
       {"[00:12:50]<00:12.50>a <00:13.00>b"}},
  };
  for (const auto& each : cases) {
    const Lines lines = Lane(each.lines, 1).Dragged(each.toMs, each.how);
    EXPECT_EQ(lines.front(), each.lines.front()) << each.name;
    EXPECT_EQ(Lines(lines.begin() + 1, lines.end()), each.expected) << each.name;
  }
}

TEST(LaneModel, AnOffsetOfTheLyricsMovesTheMarkersAndNotTheTags) {
  Lane lane({"[offset:500]", "[00:12:00]a"}, 1, 500);
  EXPECT_EQ(lane.model.Chosen()->timeMs, 11500) << "where it is heard";
  EXPECT_EQ(lane.Dragged(12340, {false, 50})[1], "[00:12:85]a") << "the onset at 12.347 s";
}

TEST(LaneModel, KeysChooseNudgeAndSnap) {
  Lane lane(kThree, 1);
  EXPECT_EQ(lane.model.Nudged(10, false)->toMs, 12010);
  EXPECT_EQ(lane.model.Snapped()->toMs, 12350);
  EXPECT_EQ(lane.model.Nudged(-100, true), (TLaneMove{1, 0, 12000, 11900, true}));
  EXPECT_FALSE(lane.model.ChooseNext(false)) << "tags of other lines are not chosen";
  ASSERT_TRUE(lane.model.ChooseNext(true) && lane.model.ChooseNext(true));
  EXPECT_EQ(lane.model.Chosen()->kind, TMarkerKind::kEnd);
  EXPECT_FALSE(lane.model.ChooseNext(true));
  EXPECT_FALSE(lane.model.Snapped()) << "no onset is near";
  EXPECT_EQ(after(kThree, *lane.model.Nudged(100, false))[1], "[00:12:00]two [00:12:50]more[00:13:10]");
}

TEST(LaneModel, SnappingPrefersAMuchStrongerOnsetCloseBy) {
  const struct {
    std::vector<TOnset> onsets;
    std::string line;
  } cases[] = {
      {{{9950, 100}, {10140, 199}}, "[00:09:95]a"},
      {{{9950, 100}, {10140, 200}}, "[00:10:14]a"},
      {{{9860, 210}, {9950, 100}, {10140, 200}}, "[00:09:86]a"},
      {{{9950, 100}, {10160, 255}}, "[00:09:95]a"},
      {{{9600, 100}, {10480, 255}}, "[00:09:60]a"},
  };
  for (const auto& each : cases) {
    Lane lane({"[00:10:00]a"}, 0);
    auto sound = std::make_shared<TSongSound>();
    sound->SetOnsets(each.onsets);
    lane.model.SetSound(sound);
    EXPECT_EQ(after(lane.lines, lane.model.Snapped().value()).front(), each.line);
  }
}

TEST(LaneModel, AnUntaggedLineGetsItsTagWhereTheUserClicksBetweenItsNeighbours) {
  const Lines untagged{"[00:04:00]one [00:04:80]more", "two", "", "[00:16:00]three"};
  const std::tuple<int32, int32, TTagForm, std::string> cases[] = {
      {6004, 0, TTagForm::kExtended, "[00:06:00]two"},  {6006, 0, TTagForm::kExtended, "[00:06:01]two"},
      {5040, 50, TTagForm::kExtended, "[00:05:00]two"}, {5040, 30, TTagForm::kExtended, "[00:05:04]two"},
      {1000, 0, TTagForm::kExtended, "[00:04:80]two"},  {20000, 0, TTagForm::kExtended, "[00:16:00]two"},
      {5600, 0, TTagForm::kStandard, "[00:06]two"},
  };
  for (const auto& [timeMs, reachMs, form, line] : cases) {
    const Lane lane(untagged, 1);
    const TLinesChange change = line_tagged(lane.lines, 1, lane.model.NewTagTime(timeMs, reachMs).value(), form);
    EXPECT_EQ(change.first, 1);
    EXPECT_THAT(change.lines, ElementsAre(line)) << timeMs;
  }
  EXPECT_FALSE(Lane(untagged, 0).model.NewTagTime(6000, 0)) << "has one";
  EXPECT_FALSE(Lane({}, -1).model.NewTagTime(6000, 0));
  EXPECT_EQ(line_tagged(untagged, 0, 6000, TTagForm::kExtended).removed, 0);
}

TEST(LaneModel, TheZoomIsKeptAndThePageTurnsOnlyWhenTheHeadRunsOut) {
  Lane lane(kThree, 1);
  lane.model.Zoom(0.5, 12000);
  EXPECT_EQ(lane.model.Range(), (TLaneRange{11500, 14500})) << "12 s stays where it is";
  EXPECT_FALSE(lane.model.Follow(14400));
  EXPECT_TRUE(lane.model.Follow(14510));
  EXPECT_EQ(lane.model.Range(), (TLaneRange{14210, 17210}));
  EXPECT_FALSE(lane.model.Follow(60000)) << "a jump elsewhere";
  lane.model.SetLyrics({lane.lines, 0, -1, 0});
  EXPECT_EQ(lane.model.Range(), (TLaneRange{9500, 11500})) << "half of the line's range";
  lane.model.ResetZoom();
  EXPECT_EQ(lane.model.Range(), (TLaneRange{9000, 13000}));
  for (int i = 0; i < 100; ++i) lane.model.Zoom(0.5, 10000);
  EXPECT_EQ(lane.model.Range().Length(), kShortestLaneMs);
}

TEST(LaneColors, EverythingStandsOutOnTheUsersOwnColours) {
  const std::pair<rgb_color, rgb_color> kTextOnBackground[] = {
      {{255, 255, 255, 255}, {0, 0, 0, 255}},       {{0, 0, 0, 255}, {255, 255, 255, 255}},
      {{255, 255, 255, 255}, {128, 128, 128, 255}}, {{0, 0, 0, 255}, {128, 128, 128, 255}},
      {{255, 255, 0, 255}, {0, 0, 160, 255}},       {{255, 220, 220, 255}, {150, 20, 20, 255}},
      {{120, 60, 0, 255}, {255, 240, 200, 255}}};
  for (const auto& [text, background] : kTextOnBackground) {
    const TLaneColors colors = TLaneColors::On(background, text);
    const std::string where = "on " + std::to_string(background.red) + ", text " + std::to_string(text.red);
    for (const rgb_color marker : {colors.tag, colors.chosen, colors.head, colors.onset})
      EXPECT_GE(contrast(marker, background), 3) << where;
    EXPECT_GE(contrast(colors.wave, background), 2) << where;
    EXPECT_GE(contrast(colors.neighbour, background), std::min(4.5, contrast(text, background))) << where;
    EXPECT_LT(contrast(colors.middle, background), contrast(colors.loudest, background)) << where;
  }
}

TEST(LaneOverlay, ShowsOnsetsAndTagsTheLinesOwnOverTheOthersWithLabelsThatFit) {
  const TLaneColors colors = TLaneColors::On({0, 0, 0, 255}, {255, 255, 255, 255});
  const auto strings = [&](const Lane& lane, const std::string& text) {
    std::vector<std::tuple<std::string, float, float>> drawn; // the left end and the room
    for (const picture_op& op : lane_overlay(lane.model, colors, {600, 100}, text).ops)
      if (op.what == picture_op::kind::string) drawn.emplace_back(op.text, op.rect.left, op.maxWidth);
    return drawn;
  };
  const Lane lane(kThree, 1); // 100 pixels are a second
  EXPECT_THAT(strings(lane, "Reading"),
              ElementsAre(std::tuple("one", 4, 96), std::tuple("three", 504, 96), std::tuple("two ", 104, 46),
                          std::tuple("more", 154, 346), std::tuple("Reading", 8, 584)));
  EXPECT_THAT(strings(Lane({"[00:10:00]a", "[00:10:00]b", "[00:14:00]c"}, 1), ""),
              ElementsAre(std::tuple("c", 504, 96), std::tuple("b", 104, 396)))
      << "of tags at one time, the line's own has the label";
  std::vector<std::tuple<float, float, float, float>> fills;
  for (const picture_op& op : lane_overlay(lane.model, colors, {600, 100}, "").ops)
    if (op.what == picture_op::kind::fill_rect)
      fills.emplace_back(op.rect.left, op.rect.top, op.rect.right, op.rect.bottom);
  EXPECT_THAT(fills,
              ElementsAre(std::tuple(0, 0, 599, 0), std::tuple(135, 90, 135, 99), std::tuple(400, 95, 400, 99),
                          std::tuple(-100, 0, -100, 99), std::tuple(500, 0, 500, 99), std::tuple(99, 0, 101, 99),
                          std::tuple(97, 16, 103, 20), std::tuple(150, 16, 150, 99), std::tuple(200, 16, 200, 99)));
}

TEST(LanePixels, ALoudToneIsAtItsTimeAndHeight) {
  TSoundPart part{1000, std::vector<uint8>(200 * kSoundBands, 0), std::vector<uint8>(200, 0)};
  part.levels[100 * kSoundBands + 63] = 255; // 1.5 s, the highest band
  part.peaks[100] = 255;
  TSongSound sound;
  sound.Add(part);
  const TLaneColors colors = TLaneColors::On({0, 0, 0, 255}, {255, 255, 255, 255});
  const auto drawn = [&](TLaneLook look) { return sound_pixels(&sound, {1000, 2000}, look, colors, 200, 80, 16); };
  const auto lit = [](const pixel_image& image) {
    std::vector<std::pair<size_t, size_t>> places;
    for (size_t i = 0; i < image.pixels.size(); ++i)
      if (image.pixels[i] != 0xff000000) places.emplace_back(i % 200, i / 200);
    return places;
  };
  EXPECT_THAT(lit(drawn(TLaneLook::kSpectrogram)),
              AllOf(Contains(Pair(100, 16)), Each(Pair(100, AllOf(Ge(16), Lt(19))))));
  EXPECT_THAT(lit(drawn(TLaneLook::kWave)), IsSupersetOf({std::pair<size_t, size_t>(100, 16), {100, 48}, {100, 79}}));
  EXPECT_THAT(lit(sound_pixels(nullptr, {0, 1}, TLaneLook::kWave, colors, 10, 10, 2)), IsEmpty());
  EXPECT_TRUE(sound_pixels(&sound, {0, 1}, TLaneLook::kWave, colors, 0, -1, 2).pixels.empty());
}

TEST(LaneProposals, AcceptedTimesAreOneChangeOfTheLinesThatStillHaveTheOldOnes) {
  const Lines lines{"[offset:100]",
                    "[00:10:10]one [00:11:00]two",
                    "[00:12]two",
                    "[00:14:12]three",
                    "[00:16:00][01:16:00]four",
                    "[00:18:00]five",
                    "six"};
  EXPECT_THAT(times_to_improve(lines, 100), ElementsAre(Pair(1, 10000), Pair(3, 14020), Pair(5, 17900)))
      << "only single tags with hundredths";
  int32 count = 0;
  const std::vector<TProposedTag> accepted{{1, 10000, 9907}, {3, 14020, 13900}, {5, 17000, 16000}, {99, 0, 1}};
  const TLinesChange change = lines_improved(lines, accepted, 100, &count);
  EXPECT_EQ(count, 2) << "the fifth line has another time, and there is no line 99";
  EXPECT_EQ(change.first, 1);
  EXPECT_THAT(change.lines, ElementsAre("[00:10:01]one [00:10:91]two", "[00:12]two", "[00:14:00]three"));
  EXPECT_EQ(lines_improved(lines, {}, 0, &count).removed, 0);
}
