#include "document/editor_view.h"
#include "document/song_sound_source.h"
#include "editviews/view_choices.h"
#include "hostlink/host_link.h"
#include "lane/lane_view.h"
#include "songsound/song_sound.h"
#include "tests/support/editor_fixture.h"

using namespace testing;

namespace {

struct LaneInTheEditor : EditorByHand {
  LaneInTheEditor() {
    Open(fFolder.Write("a.lrc", "[00:10:00]one\n[00:12:00]two\n[00:16:00]three\n"));
    Press("Down", "Ctrl+G");
  }
  BView* View() const { return fWindow->FindView("Lane"); }
  BPoint At(int32 timeMs) const {
    const TLaneRange range{11000, 17000};
    return {static_cast<float>(range.XOf(timeMs, static_cast<double>(View()->Bounds().Width()) + 1)), 60};
  }
};

} // namespace

TEST_F(LaneInTheEditor, AClickPlaysFromThereAndOnANeighbourSelectsItsLine) {
  hands::click(*fWindow, "Lane", At(14000));
  EXPECT_TRUE(Until([&] {
    const auto told = fHost->Commands();
    return !told.empty() && told.front().first == kMsgHostSeek && std::abs(told.front().second - 14000) < 30;
  }));
  hands::click(*fWindow, "Lane", At(16000));
  Settle();
  EXPECT_EQ(EditView().CurLine(), 2);
}

TEST_F(LaneInTheEditor, CtrlMovesTheLaterTagsAsWell) {
  hands::click(*fWindow, "Lane", At(12000));
  Settle();
  Press("Up", "Ctrl+Down");
  EXPECT_THAT(Lines(), ElementsAre("[00:10:00]one", "[00:12:00]two", "[00:15:99]three"));
}

TEST_F(LaneInTheEditor, TheLyricsGetTheirRoomBackAndTheChoiceIsKept) {
  EXPECT_TRUE(TViewChoices().showsLane);
  const float height = fWindow->FindView("ScrlView")->Frame().Height();
  Press("Ctrl+E");
  SendToView(BMessage(kMsgRefreshInfo));
  EXPECT_TRUE(View()->IsHidden()) << "in free edit mode no line is selected";
  Press("Ctrl+T");
  SendToView(BMessage(kMsgRefreshInfo));
  EXPECT_FALSE(View()->IsHidden());
  EXPECT_EQ(fWindow->FindView("ScrlView")->Frame().Height(), height);
  Press("Ctrl+G");
  EXPECT_TRUE(View()->IsHidden());
  EXPECT_EQ(fWindow->FindView("ScrlView")->Frame().Height(), height + 120);
}

TEST_F(LaneInTheEditor, ProposalsForTheDocumentBeforeAreNotTaken) {
  const auto number = static_cast<TVesmoEView*>(fWindow->FindView("VesmoEditorView"))->DocumentNumber();
  const auto accept = [this](int32 document) {
    SendToView(message_of(kMsgAcceptProposals, "Document", document, "Row", 0, "FromMs", 10000, "ToMs", 10200));
  };
  Answer("U", [&] { accept(number - 1); });
  EXPECT_EQ(Lines().front(), "[00:10:00]one");
  accept(number);
  EXPECT_EQ(Lines().front(), "[00:10:20]one");
}

TEST_F(LaneInTheEditor, AnAnswerAboutASongThatWasLeftIsIgnored) {
  Sonivo_FrontEnd link(false, 100000);
  TSongSoundSource sound(View(), &link);
  const BMessage late = message_of(kMsgSongFound, "song", "/left.mp3");
  EXPECT_EQ(BMessenger(&sound).SendMessage(&late), B_OK);
  Settle();
  sound.Poll({0, 1000});
  EXPECT_EQ(sound.Sound(), nullptr);
}
