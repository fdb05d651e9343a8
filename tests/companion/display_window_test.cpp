#include "companion/display_window.h"

#include "companion/display_view.h"
#include "companion/prefs/notices.h"
#include "document/editor_view.h"
#include "platform/app/message.h"
#include "plugin/message_codes.h"
#include "tests/support/editor_fixture.h"

namespace {

/** The display's window beside the editor's, both with their messages delivered by the test. */
class DisplayByHand : public EditorByHand {
protected:
  DisplayByHand() : fDisplay(new TVesmoDWin({20, 20, 419, 219}, BMessenger(fWindow))) {
    fHost->fEntries = {{fFolder.File("song.mp3"), "song"}, {fFolder.File("other.mp3"), "other"}};
    fDisplay->SetRunsOnShow(false);
    EXPECT_TRUE(fDisplay->Lock());
    fDisplay->Show();
  }
  ~DisplayByHand() override { fDisplay->Quit(); }

  std::string Line() const { return static_cast<TDisplayView*>(fDisplay->FindView("Display"))->CurrentLine(); }
  bool Shows(const std::string& line) {
    return hands::until([&] {
      hands::settle(*fDisplay);
      Settle();
      return Line() == line;
    });
  }

  TVesmoDWin* fDisplay;
};

} // namespace

TEST_F(DisplayByHand, ShowsTheLineOfTheFileThatIsSung) {
  EXPECT_TRUE(Shows("No song is playing"));
  fFolder.Write("song.lrc", "[00:01]one\n[00:02:50]two\nplain\n");
  fHost->SetRecord(0, "song");
  EXPECT_TRUE(Shows("")) << "nothing is sung yet";
  fHost->SetRecord(2600, "song");
  EXPECT_TRUE(Shows("two"));
  fFolder.Write("song.lrc", "[00:01]one\n[00:02]second\n");
  EXPECT_TRUE(Shows("second")) << "the file has changed";
  fHost->SetRecord(2600, "other");
  EXPECT_TRUE(Shows("No lyrics file found next to this song"));
}

TEST_F(DisplayByHand, RefrainIsShownEachTimeWithoutItsTagsAndByTheOffset) {
  fFolder.Write("song.lrc", "[offset:500]\n[00:02][00:06]re<00:02.50>frain\n[00:04]verse\n");
  for (const auto& [positionMs, line] : {std::pair(1500, "refrain"), {3500, "verse"}, {5500, "refrain"}}) {
    fHost->SetRecord(positionMs, "song");
    EXPECT_TRUE(Shows(line)) << positionMs;
  }
}

TEST_F(DisplayByHand, FollowsTheEditorUntilThatCloses) {
  const std::string path = fFolder.Write("song.lrc", "one\n[00:09]two\n");
  PlayAt(5000, "song");
  EXPECT_TRUE(Shows(""));
  Open(path);
  Press("Space");
  EXPECT_TRUE(Shows("one")) << "stamped, and not saved";
  SendToView(BMessage(kMsgUndo));
  EXPECT_TRUE(Shows(""));
  SendToView(BMessage(kMsgRedo));
  EXPECT_TRUE(Shows("one"));
  Answer("N", [this] { PressCloseButton(); });
  EXPECT_TRUE(Shows("")) << "the file again";
}

TEST_F(DisplayByHand, TakesFontAndColoursAtOnce) {
  hands::settle(*fDisplay);
  const std::string before = hands::pixels(*fDisplay, "Display");
  SetPref([](TPrefValues* values) { values->lyrics = {200, 0, 0, 255}; });
  fDisplay->PostMessage(kMsgAppearance);
  hands::settle(*fDisplay);
  const std::string red = hands::pixels(*fDisplay, "Display");
  EXPECT_NE(red, before);
  SetPref([](TPrefValues* values) { values->fontSize = 20; });
  fDisplay->PostMessage(kMsgAppearance);
  hands::settle(*fDisplay);
  EXPECT_NE(hands::pixels(*fDisplay, "Display"), red);
}
