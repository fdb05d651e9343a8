#include "commands/key_bindings.h"
#include "editviews/tag_input_view.h"
#include "platform/display/event_time.h"
#include "platform/interface/list_peer.h"
#include "tests/support/editor_fixture.h"

using namespace testing;

struct TagInputWords : EditorByHand {
  void ShowWords(const std::string& lyrics) {
    Show(lyrics);
    Press("Ctrl+B");
  }
  void TapAt(const std::vector<int32>& positionsMs) {
    for (const int32 position : positionsMs) {
      PlayAt(position);
      Press("Space");
    }
  }
};

TEST_F(TagInputWords, TheSpaceBarTimesWordAfterWordAndBackspaceTakesThemBack) {
  fHost->SetPlaying(false); // the position stays
  ShowWords("Hold on\nnow\n夜に\n");
  TapAt({1000, 1500});
  EXPECT_THAT(Lines(), ElementsAre("[00:01:00]Hold [00:01:50]on", "now", "夜に"));
  EXPECT_THAT(Status(), EndsWith("Timed word 2 / 2  “on”"));
  EXPECT_EQ(EditView().CurLine(), 1);
  Press("Backspace");
  EXPECT_EQ(Lines().front(), "[00:01:00]Hold on");
  EXPECT_EQ(EditView().CurLine(), 0);
  TapAt({1600, 2000, 3000, 3500});
  EXPECT_THAT(Lines(), ElementsAre("[00:01:00]Hold [00:01:60]on", "[00:02:00]now", "[00:03:00]夜[00:03:50]に"));
  for (int i = 0; i < 3; ++i) Press("Ctrl+Z");
  EXPECT_THAT(Lines(), ElementsAre("[00:01:00]Hold [00:01:60]on", "now", "夜に"));
  EXPECT_EQ(EditView().CurLine(), 1);
  TapAt({2200});
  Press("Backspace"); // the line's first word: another try
  EXPECT_THAT(Status(), EndsWith("Stamp again: line 2"));
  EXPECT_TRUE(WasTold({kMsgHostSeek, 200}));
  Press("Ctrl+B");
  TapAt({2300});
  EXPECT_EQ(EditView().CurLine(), 2) << "lines again";
}

TEST_F(TagInputWords, AKeyHeldOnTheLastWordEndsTheLineAndKeysHaveTheirOwnTime) {
  fHost->SetPlaying(false); // the position stays
  ShowWords("one two\nthree\nfour\n");
  PlayAt(1000);
  hands::hold(*fWindow, "Space", 1000, 400); // not the last word
  Settle();
  hands::hold(*fWindow, "Space", 1000, 195);
  Settle();
  EXPECT_EQ(Lines().front(), "[00:01:00]one [00:01:00]two");
  hands::hold(*fWindow, "Space", 1000, 205); // an event's time is known to milliseconds
  Settle();
  EXPECT_THAT(Lines(), ElementsAre("[00:01:00]one [00:01:00]two", "[00:01:00]three[00:01:00]", "four"));
  fHost->SetPlaying(true);
  PlayAt(60000);
  hands::hold(*fWindow, "Space", 1000, 50);
  Settle();
  EXPECT_LE(Lines().back(), "[00:59:00]four") << "the key was pressed a second ago";
  EXPECT_GT(Lines().back(), "[00:54:00]four");
  constexpr bigtime_t kNow = 5000000 + (bigtime_t{1} << 32) * 1000;
  const std::tuple<uint64, bigtime_t> times[] = {{4900, kNow - 100000}, {0, kNow}, {5100, kNow}, {100, kNow - 4900000}};
  for (const auto& [stamp, time] : times) EXPECT_EQ(display::time_of_stamp(stamp, kNow), time) << stamp;
}

TEST_F(TagInputWords, ALateReleaseDoesNotTouchALineThatHasChangedNorBackspaceTheLineAbove) {
  fHost->SetPlaying(false);
  ShowWords("one two\nthree\nfour\n");
  TapAt({1000});
  hands::hold(*fWindow, "Space", 1000, 400);
  hands::wait_for_display();
  while (EditView().CurLine() == 0 && fWindow->DeliverNext()) {
  }
  const std::string changed = "[00:09:00]one [00:09:50]two";
  static_cast<TTagInputView&>(EditView()).RetimeLines({0, 1, {changed}});
  Settle();
  EXPECT_EQ(Lines().front(), changed);
  for (const char* key : {"Down", "Up", "Backspace"}) Press(key);
  EXPECT_EQ(Lines().front(), changed);
  EXPECT_EQ(EditView().CurLine(), 1);
}

TEST_F(TagInputWords, AKeyThatTheUserHasGivenToStampsHasItsOwnTimeAndCanBeHeldToo) {
  TKeys keys;
  keys.Set(TCommandId::kStamp, "T");
  gKeyBindings->SetValues(keys);
  fHost->SetPlaying(false);
  ShowWords("one\ntwo\n");
  PlayAt(1000);
  hands::hold(*fWindow, "T", 1000, 250);
  Settle();
  EXPECT_THAT(Lines(), ElementsAre("[00:01:00]one[00:01:00]", "two"));
  fHost->SetPlaying(true);
  PlayAt(60000);
  hands::hold(*fWindow, "T", 1000, 50);
  Settle();
  EXPECT_LE(Lines().back(), "[00:59:00]two") << "the key was pressed a second ago";
  EXPECT_GT(Lines().back(), "[00:54:00]two");
}

TEST_F(TagInputWords, OnlyTheReleaseOfTheHeldKeyEndsTheLineAndNoneAfterTheWindowWasLeft) {
  fHost->SetPlaying(false);
  ShowWords("one\ntwo\nthree\n");
  PlayAt(1000);
  const BMessenger list(fWindow->FindView("TagInputView"));
  const auto send = [&](uint32 what, int32 scanCode, int64 whenUs) {
    BMessage key = message_of(what, "bytes", " ", "scan_code", scanCode);
    key.AddInt64("when", whenUs);
    list.SendMessage(&key);
    Settle();
  };
  const bigtime_t nowUs = system_time();
  send(B_KEY_DOWN, 65, nowUs - 900000);
  send(display::DISPLAY_KEY_RELEASED, 38, nowUs - 500000);
  EXPECT_EQ(Lines().front(), "[00:01:00]one") << "another key";
  send(display::DISPLAY_KEY_RELEASED, 65, nowUs);
  EXPECT_EQ(Lines().front(), "[00:01:00]one[00:01:00]");
  send(B_KEY_DOWN, 65, nowUs - 900000);
  static_cast<BView*>(fWindow->FindView("TagInputView"))->WindowActivated(false);
  send(display::DISPLAY_KEY_RELEASED, 65, nowUs);
  EXPECT_THAT(Lines(), ElementsAre("[00:01:00]one[00:01:00]", "[00:01:00]two", "three"));
}

TEST_F(TagInputWords, CutsAndTimesAreChangedByKeysEachInOneStep) {
  const std::string lyrics = "[ti:x]\n[00:10:00]New [00:11:00]York [00:12:00]sleeps\n[00:20:00]New York sleeps\nend\n";
  ShowWords(lyrics);
  EditView().SetCurLine(1);
  const std::list<std::string> before = Lines();
  const auto lineAfter = [&](const std::vector<const char*>& keys, int line) {
    for (const char* key : keys) Press(key);
    const std::string changed = *std::next(Lines().begin(), line);
    Press("Ctrl+Z");
    EXPECT_EQ(Lines(), before) << keys.front();
    EditView().SetCurLine(0);
    EditView().SetCurLine(1);
    return changed;
  };
  Press("Right");
  EXPECT_THAT(Status(), EndsWith("Next word: 1 / 3  “New ”"));
  Press("Left");
  EXPECT_EQ(lineAfter({"J"}, 1), "[00:10:00]New \u2060York [00:12:00]sleeps");
  EXPECT_EQ(lineAfter({"Right", "K"}, 1), "[00:10:00]N\u200bew [00:11:00]York [00:12:00]sleeps");
  EXPECT_EQ(lineAfter({"Ctrl+Shift+R"}, 2), "[00:20:00]New [00:21:00]York [00:22:00]sleeps");
  EXPECT_EQ(lineAfter({"Right", "Right", "Right", "Right", "Ctrl+Shift+Delete"}, 1), "[00:10:00]New York sleeps");
  EXPECT_EQ(lineAfter({"Ctrl+Shift+Delete"}, 2), "New York sleeps");
  EXPECT_EQ(lineAfter({"+"}, 1), "[00:10:01]New [00:11:01]York [00:12:01]sleeps");
  EXPECT_EQ(lineAfter({"X"}, 1), "[00:10:00]New York sleeps");
  EXPECT_TRUE(WasTold({kMsgHostSeek, 8000}));
  const BMessage shift = message_of(kMsgShiftTags, "_SmplIptData", "1000");
  SendToView(shift);
  EXPECT_EQ(*std::next(Lines().begin()), "[00:11:00]New [00:12:00]York [00:13:00]sleeps");
  Press("Ctrl+Z", "Ctrl+B");
  for (const char* key : {"J", "K", "X", "Left"}) Press(key);
  EXPECT_EQ(Lines(), before) << "switched off";
  SendToView(shift);
  EXPECT_EQ(*std::next(Lines().begin()), "[00:11:00]New [00:11:00]York [00:12:00]sleeps");
}

TEST_F(TagInputWords, TheSungWordIsMarkedInItsRow) {
  fHost->SetPlaying(true);
  ShowWords("[00:01:00]one [05:00:00]two\n[50:00:00]x\n");
  const auto drawnAt = [this](int32 positionMs) {
    PlayAt(positionMs);
    return hands::pixels(*fWindow, "TagInputView");
  };
  const std::string first = drawnAt(2000);
  EXPECT_NE(drawnAt(400000), first);
  EXPECT_EQ(drawnAt(2000), first);
}

TEST_F(TagInputWords, ACommonDocumentGetsAngleBracketsAndRowsShowTextInsteadOfTags) {
  fHost->SetPlaying(false);
  ShowWords("[00:01.00]a b c\n");
  TapAt({2000, 2500});
  EXPECT_THAT(Lines(), ElementsAre("[00:02:00]a <00:02.50>b c"));
  EXPECT_EQ(hands::row_text(*fWindow, "TagInputView", 0), "[00:02:00]a b c");
  EXPECT_EQ(hands::row_description(*fWindow, "TagInputView", 0), "2 of 3 words timed, next: c");
  EXPECT_EQ(hands::label_text(*fWindow, "WordTimes"), " 00:02:00 a   00:02:50 b   – c  ");
  Press("Ctrl+S");
  EXPECT_EQ(fFolder.Read("a.lrc"), "[00:02.00]a <00:02.50>b c\n");
}
