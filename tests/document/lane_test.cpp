#include "common/song_cache.h"
#include "document/editor_view.h"
#include "document/song_sound_source.h"
#include "editviews/view_choices.h"
#include "hostlink/host_link.h"
#include "lane/lane_view.h"
#include "platform/interface/pixel_peer.h"
#include "platform/kernel/modifiers.h"
#include "songsound/sound_bytes.h"
#include "tests/support/editor_fixture.h"

using namespace std::string_literals;
using namespace testing;

namespace {

struct LaneInTheEditor : EditorByHand {
  LaneInTheEditor() { setenv("XDG_CACHE_HOME", fFolder.Path().c_str(), 1); }
  /** A song of 20 s whose sound has been read before; it is quiet, with these onsets. */
  void PlaySong(int32 positionMs, const std::vector<TOnset>& onsets) {
    const std::string song = fFolder.Write("song.mp3", "sound");
    TReadSound sound{{0, std::vector<uint8>(4000 * kSoundBands, 0), std::vector<uint8>(4000, 0)}, true, 20000, onsets};
    keep_cached(cached_song_file(song, "Sound", "snsd"), packed_sound(sound), 1 << 20);
    Play(positionMs, song);
  }
  void Play(int32 positionMs, const std::string& song) {
    fHost->fEntries = {{song, song}};
    fHost->SetRecord(positionMs, song, THostInformation::kSize, 20000);
    EXPECT_TRUE(Polled([&] { return fHost->CountHeard() > 1; }));
    SendToView(BMessage(kMsgRefreshInfo)); // takes the last answer
  }
  /** Lets the editor ask the player, until that is so. */
  bool Polled(const std::function<bool()>& isSo) {
    return Until([&] {
      SendToView(BMessage(kMsgRefreshInfo));
      return isSo();
    });
  }
  /** The second line is selected. */
  void ShowLane(const std::string& lyrics = "[00:10:00]one\n[00:12:00]two\n[00:16:00]three\n") {
    Show(lyrics, 1);
    Press("Ctrl+G");
  }
  BView* View() const { return fWindow->FindView("Lane"); }
  BPoint At(int32 timeMs) const {
    const TLaneRange range = static_cast<TLaneView*>(View())->Model().Range();
    return {static_cast<float>(range.XOf(timeMs, static_cast<double>(View()->Bounds().Width()) + 1)), 60};
  }
  /** From where a click there plays. */
  int32 PlayedAt(BPoint where) {
    const size_t told = fHost->Commands().size();
    hands::click(*fWindow, "Lane", where);
    EXPECT_TRUE(Until([&] { return fHost->Commands().size() > told; }));
    return fHost->Commands().back().second;
  }
  void TurnWheel(float steps, int32 modifiers) {
    BMessage turned = message_of(display::DISPLAY_MOUSE, "action", static_cast<int32>(display::MouseAction::kWheel),
                                 "modifiers", modifiers);
    for (const auto& [name, value] : {std::pair("x", At(14000).x), {"y", 60.0F}, {"steps", steps}})
      turned.AddFloat(name, value);
    fWindow->PostMessage(&turned, View());
    Settle();
  }
  std::string Line(int row) const { return *std::next(Lines().begin(), row); }
};

} // namespace

TEST_F(LaneInTheEditor, AClickPlaysFromThereAndOnANeighbourSelectsItsLine) {
  ShowLane();
  EXPECT_NEAR(PlayedAt(At(14000)), 14000, 30);
  hands::click(*fWindow, "Lane", At(16000));
  Settle();
  EXPECT_EQ(EditView().CurLine(), 2);
}

TEST_F(LaneInTheEditor, KeysChooseATagMoveItAndZoomAroundIt) {
  ShowLane("[00:10:00]one\n[00:12:00]two [00:12:50]more[00:13:00]\n[00:16:00]three\n");
  PlaySong(1000, {{12347, 255}});
  hands::click(*fWindow, "Lane", At(12000));
  Settle();
  EXPECT_THAT(Status(), EndsWith("Tag of the line: [00:12:00]  “two ”"));
  const std::tuple<const char*, const char*, const char*> kSteps[] = {
      {"Right", "Tag of the word: [00:12:50]  “more”", "[00:12:00]two [00:12:50]more[00:13:00]"},
      {"Up", "Tag of the word: [00:12:51]  “more”", "[00:12:00]two [00:12:51]more[00:13:00]"},
      {"Shift+Down", "Tag of the word: [00:12:41]  “more”", "[00:12:00]two [00:12:41]more[00:13:00]"},
      {"-", "Tag of the word: [00:12:40]  “more”", "[00:12:00]two [00:12:40]more[00:13:00]"},
      {"+", "Tag of the word: [00:12:41]  “more”", "[00:12:00]two [00:12:41]more[00:13:00]"},
      {"Right", "End of the line: [00:13:00]", "[00:12:00]two [00:12:41]more[00:13:00]"},
      {"Right", "End of the line: [00:13:00]", "[00:12:00]two [00:12:41]more[00:13:00]"},
      {"Left", "Tag of the word: [00:12:41]  “more”", "[00:12:00]two [00:12:41]more[00:13:00]"},
      {"Ctrl+Up", "Tag of the word: [00:12:42]  “more”", "[00:12:00]two [00:12:42]more[00:13:01]"},
  };
  for (const auto& [key, described, line] : kSteps) {
    Press(key);
    EXPECT_THAT(Status(), EndsWith(described)) << key;
    EXPECT_EQ(Line(1), line) << key;
  }
  EXPECT_EQ(Line(2), "[00:16:01]three") << "with Ctrl the later ones move as well";
  EXPECT_TRUE(Polled([&] {
    Press("s");
    return Line(1) == "[00:12:00]two [00:12:35]more[00:13:01]";
  })) << "to the onset";
  Press("Return");
  EXPECT_TRUE(WasTold({kMsgHostSeek, 12350}));

  const float middle = static_cast<float>(View()->Bounds().Width()) / 2;
  const auto playedAfter = [&](const std::function<void()>& act) {
    act();
    return PlayedAt({middle, 60});
  };
  EXPECT_NEAR(playedAfter([&] { Press("Ctrl++"); }), 12350 + 1650 * 0.8, 30);
  EXPECT_NEAR(playedAfter([&] { Press("Ctrl++", "Ctrl+-"); }), 12350 + 1650 * 0.8, 30);
  EXPECT_NEAR(playedAfter([&] { Press("Ctrl+0"); }), 14000, 30);
  EXPECT_NEAR(playedAfter([&] { TurnWheel(-1, B_SHIFT_KEY); }), 14600, 30);
  TurnWheel(1, B_SHIFT_KEY);
  TurnWheel(1, 0);
  EXPECT_NEAR(PlayedAt({middle + static_cast<float>(View()->Bounds().Width()) / 4, 60}), 14000 + 1500 * 0.8, 90)
      << "the time under the mouse has stayed";
}

TEST_F(LaneInTheEditor, ALineWithoutATagGetsItByADoubleClickOrAtThePlayPosition) {
  ShowLane("[00:10:00]one\ntwo\n[00:16:00]three\n");
  hands::click(*fWindow, "Lane", At(13000));
  Settle();
  Press("T");
  EXPECT_THAT(Status(), EndsWith("No song is playing."));
  PlaySong(13000, {{12347, 255}});
  EXPECT_TRUE(Polled([&] {
    Press("t");
    return Line(1) == "[00:13:00]two";
  }));
  const auto takeBack = [this](int32 mode) {
    SendToView(BMessage(kMsgUndo));
    SendToView(message_of(kMsgMode, "Mode", mode));
    SendToView(BMessage(kMsgRefreshInfo));
    View()->MakeFocus();
    Settle();
  };
  takeBack(1);
  Press("T");
  EXPECT_EQ(Line(1), "[00:13]two") << "in the form of the mode";
  takeBack(0);
  hands::click(*fWindow, "Lane", At(12390), 2);
  Settle();
  EXPECT_EQ(Line(1), "[00:12:35]two") << "at the onset";
  EXPECT_THAT(Status(), EndsWith("Tag of the line: [00:12:35]  “two”"));
}

TEST_F(LaneInTheEditor, ADraggedTagSnapsUnlessShiftIsHeldAndWithCtrlTheLaterOnesFollow) {
  ShowLane();
  PlaySong(1000, {{12347, 255}, {13500, 255}});
  const auto drag = [this](int32 fromMs, int32 toMs, const char* modifier) {
    hands::drag(*fWindow, "Lane", At(fromMs), At(toMs), modifier);
    Settle();
    return std::pair(Line(1), Line(2));
  };
  hands::click(*fWindow, "Lane", At(12000));
  EXPECT_TRUE(Polled([&] {
    Press("s"); // once the sound is known
    return Line(1) == "[00:12:35]two";
  }));
  EXPECT_EQ(drag(12350, 13540, "Ctrl"), std::pair("[00:13:50]two"s, "[00:17:15]three"s));
  EXPECT_THAT(Status(), EndsWith("Tag of the line: [00:13:50]  “two”"));
  EXPECT_NE(drag(13500, 13460, "Shift").first, "[00:13:50]two");
  EXPECT_EQ(Line(2), "[00:17:15]three");
}

TEST_F(LaneInTheEditor, TheLyricsGetTheirRoomBackAndTheChoicesAreKept) {
  ShowLane();
  EXPECT_TRUE(TViewChoices().showsLane);
  const float height = fWindow->FindView("ScrlView")->Frame().Height();
  Press("Ctrl+E");
  SendToView(BMessage(kMsgRefreshInfo));
  EXPECT_TRUE(View()->IsHidden()) << "in free edit mode no line is selected";
  Press("Ctrl+T");
  SendToView(BMessage(kMsgRefreshInfo));
  EXPECT_FALSE(View()->IsHidden());
  EXPECT_EQ(fWindow->FindView("ScrlView")->Frame().Height(), height);
  hands::click(*fWindow, "Lane", At(12000));
  Settle();
  EXPECT_EQ(fWindow->CurrentFocus(), View());
  const bool showedWave = TViewChoices().showsWave;
  Press("w", "Escape");
  EXPECT_NE(TViewChoices().showsWave, showedWave);
  EXPECT_EQ(fWindow->CurrentFocus(), fWindow->FindView("TagInputView"));
  Press("Ctrl+G");
  EXPECT_TRUE(View()->IsHidden());
  EXPECT_EQ(fWindow->FindView("ScrlView")->Frame().Height(), height + 120);
}

TEST_F(LaneInTheEditor, AnAnswerAboutASongThatWasLeftIsIgnored) {
  ShowLane();
  Sonivo_FrontEnd link(false, 100000);
  TSongSoundSource sound(View(), &link);
  const BMessage late = message_of(kMsgSongFound, "song", "/left.mp3");
  EXPECT_EQ(BMessenger(&sound).SendMessage(&late), B_OK);
  Settle();
  sound.Poll({0, 1000});
  EXPECT_EQ(sound.Sound(), nullptr);
}

using ProposedTimes = LaneInTheEditor;

TEST_F(ProposedTimes, AreHeardAndAcceptedOneByOneOrTogetherAndEachIsOneStep) {
  const auto propose = [this](const std::string& report) {
    SendToView(BMessage(kMsgPropose));
    return Polled([&] { return Status().ends_with(report); });
  };
  std::string lyrics;
  std::vector<TOnset> onsets;
  for (int32 second = 1; second < 8; ++second) {
    lyrics += "[00:0" + std::to_string(second) + ":09]line\n";
    onsets.push_back({second * 1000, 255});
  }
  Show(lyrics + "[00:09]seconds\n");
  EXPECT_TRUE(propose("No song is playing.")) << Status();
  Play(1000, fFolder.Write("bad.mp3", "no sound"));
  EXPECT_TRUE(propose("The sound of this song cannot be read.")) << Status();
  PlaySong(1000, onsets);
  Press("Ctrl+E");
  EXPECT_TRUE(propose("in tag input mode only.")) << Status();
  Press("Ctrl+T");
  EXPECT_TRUE(propose("Better times proposed: 7")) << Status();

  BWindow& proposals = hands::wait_for_window("Proposed times");
  const auto shows = [&](int row, const std::string& text) {
    return hands::until([&] { return hands::row_text(proposals, "Proposals", row) == text; });
  };
  EXPECT_TRUE(shows(1, "2 [00:02:09] → [00:02:00] −0.09 s line")) << hands::row_text(proposals, "Proposals", 1);
  EXPECT_EQ(hands::spoken(proposals, "ProposalSelected").name, "S - Accept selected");
  hands::press(proposals, "Down");
  hands::press(proposals, "Return");
  EXPECT_TRUE(WasTold({kMsgHostSeek, 1000})) << "a second before it";
  EXPECT_EQ(EditView().CurLine(), 1);
  hands::click(proposals, "ProposalSelected", {8, 8});
  EXPECT_TRUE(Until([&] { return Line(1) == "[00:02:00]line"; }));
  EXPECT_THAT(Status(), EndsWith("Better times accepted: 1"));
  EXPECT_EQ(Line(0), "[00:01:09]line");
  EXPECT_TRUE(shows(1, "3 [00:03:09] → [00:03:00] −0.09 s line")) << hands::row_text(proposals, "Proposals", 1);
  hands::click(proposals, "ProposalAll", {8, 8});
  EXPECT_TRUE(Until([&] { return Line(0) == "[00:01:00]line" && !hands::is_shown(proposals); }));
  EXPECT_THAT(Status(), EndsWith("Better times accepted: 6"));
  EXPECT_EQ(Line(7), "[00:09]seconds");
  EXPECT_TRUE(propose("No better times found.")) << Status();
  Press("Ctrl+Z");
  EXPECT_EQ(Line(0), "[00:01:09]line");
  EXPECT_EQ(Line(1), "[00:02:00]line");
  Press("Ctrl+Z");

  const auto answer = [this](uint32 code, int32 document) {
    SendToView(message_of(code, "Document", document, "Row", 2, "FromMs", 3090, "ToMs", 3000));
  };
  for (const uint32 code : {kMsgAcceptProposals, kMsgHearProposal})
    EXPECT_THAT(Answer("U", [&] { answer(code, Document() - 1); }).text, HasSubstr("another document"));
  EXPECT_EQ(EditView().CurLine(), 1);
  SendToView(message_of(kMsgMode, "Mode", 2)); // no shortcut: no window is active after a question
  answer(kMsgAcceptProposals, Document());
  EXPECT_THAT(Status(), EndsWith("in tag input mode only."));
  EXPECT_FALSE(IsModified());
}
