#include "document/editor_view.h"
#include "editviews/view_choices.h"
#include "platform/app/message_filter.h"
#include "plugin/message_codes.h"
#include "tests/support/editor_fixture.h"

using namespace testing;

using SongOfTheEditor = EditorByHand;

TEST_F(SongOfTheEditor, StampToAnotherSongIsMadeButNamed) {
  PlayAt(1000, "first");
  Open(fFolder.Write("a.lrc", "one\ntwo\nthree\n"));
  Press("Space");
  EXPECT_THAT(Status(), EndsWith("Stamped line 1"));
  PlayAt(2000, "second");
  Press("Space");
  EXPECT_THAT(Lines(), ElementsAre("[00:01:00]one", "[00:02:00]two", "three"));
  EXPECT_THAT(Status(), HasSubstr("now playing another song: \"second\""));
  Press("Up", "+");
  EXPECT_THAT(Status(), Not(HasSubstr("another song")));
  PlayAt(3000, "first");
  Press("Space");
  EXPECT_THAT(Status(), Not(HasSubstr("another song")));
}

TEST_F(SongOfTheEditor, ThePlayerMarksWhereTheLinesAreSung) {
  const auto marks = [this](const std::vector<int32>& timesMs) {
    return Until([&] { return fHost->Marks() == std::pair(std::string("song"), timesMs); });
  };
  PlayAt(9000, "song");
  Open(fFolder.Write("a.lrc", "[00:10:50]one\ntwo\n[Chorus]\n[00:10]three\n"));
  EXPECT_TRUE(marks({10000, 10500}));
  Press("Down", "Space");
  EXPECT_TRUE(marks({9000, 10000, 10500}));
  Answer("N", [this] { PressCloseButton(); });
  EXPECT_TRUE(marks({})) << "with the document they go";
}

TEST_F(SongOfTheEditor, PositionAndSeekBarAreShownByChoiceAndAClickSeeks) {
  const auto play = [&](int32 positionMs, int32 durationMs) {
    fHost->SetRecord(positionMs, "song", THostInformation::kSize, durationMs);
    EXPECT_TRUE(Until([&] {
      SendToView(BMessage(kMsgRefreshInfo));
      return fHost->CountHeard() > 1;
    }));
    SendToView(BMessage(kMsgRefreshInfo)); // takes the last answer
  };
  play(61500, 600000);
  EXPECT_TRUE(fWindow->FindView("SeekBar")->IsHidden());
  SendToView(BMessage(kMsgShowClock));
  EXPECT_EQ(hands::label_text(*fWindow, "SongTime"), "01:01 / 10:00");
  const BRect bar = fWindow->FindView("SeekBar")->Bounds();
  hands::click(*fWindow, "SeekBar", {bar.Width() / 2, bar.Height() / 2});
  EXPECT_TRUE(Until([&] {
    const auto told = fHost->Commands();
    return !told.empty() && told.back().first == kMsgHostSeek && std::abs(told.back().second - 300000) < 10000;
  }));
  play(61500, 0);
  EXPECT_EQ(hands::label_text(*fWindow, "SongTime"), "");
  EXPECT_TRUE(TViewChoices().showsClock) << "the choice is kept";
}

namespace {
/** Types a line once the song has been read, just before the question about it. */
struct LateTyping : BMessageFilter {
  explicit LateTyping(BView* text) : BMessageFilter(kMsgSongLyricsRead), fText(text) {}
  filter_result Filter(BMessage*, BHandler**) override {
    for (const char* key : {"x", "\n"}) fText->KeyDown(key, 1);
    hands::wait_for_display();
    return B_DISPATCH_MESSAGE;
  }
  BView* const fText;
};
} // namespace

TEST_F(SongOfTheEditor, WhatWasTypedLastIsWrittenIntoItToo) {
  const std::string frame = std::string("USLT\0\0\0\x0F\0\0\0eng\0", 15) + "ins\nid\ntwo";
  const std::string song = fFolder.Write("c.mp3", std::string("ID3\x03\0\0\0\0\0\x19", 10) + frame);
  fHost->fEntries = {{song, "c"}};
  Open(fFolder.Write("a.lrc", "one\n"));
  PlayAt(1000, "c");
  Press("Ctrl+E", "Ctrl+Home");
  fWindow->AddCommonFilter(new LateTyping(fWindow->FindView("FreeEditView")));
  const hands::Question asked = Answer("W", [&] {
    SendToView(BMessage(kMsgWriteIntoSong));
    EXPECT_TRUE(Until([&] { return Lines().size() == 2; }));
  });
  EXPECT_THAT(asked.text, HasSubstr("lines: 2, time tags: 0"));
  EXPECT_TRUE(Until([this] { return Status().ends_with("Lyrics written into the song c.mp3"); })) << Status();
  EXPECT_THAT(fFolder.Read("c.mp3"), Not(HasSubstr("inside")));
}
