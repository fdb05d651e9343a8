#include "companion/lyrics_window.h"

#include "companion/lyrics_view.h"
#include "companion/lyrics_window_state.h"
#include "companion/prefs/notices.h"
#include "companion/song_lyrics.h"
#include "hostlink/host_link.h"
#include "tests/support/editor_fixture.h"

namespace {

/** The lyrics window and the editor's window, both with their messages delivered by the test. */
struct LyricsWindowByHand : EditorByHand {
  LyricsWindowByHand() : fLyrics(new TLyricsWindow({20, 20, 419, 219}, BMessenger(fWindow))) {
    fHost->fEntries = {{fFolder.File("song.mp3"), "song"}, {fFolder.File("other.mp3"), "other"}};
    fLyrics->SetRunsOnShow(false);
    EXPECT_TRUE(fLyrics->Lock());
    fLyrics->Show();
  }
  ~LyricsWindowByHand() override { fLyrics->Quit(); }

  std::string Pixels() {
    hands::settle(*fLyrics);
    return hands::pixels(*fLyrics, "Lyrics");
  }
  std::string After(const std::string& key) {
    hands::press(*fLyrics, key);
    return Pixels();
  }
  std::string Line() const { return static_cast<TLyricsView*>(fLyrics->FindView("Lyrics"))->CurrentLine(); }
  bool Shows(const std::string& line) {
    return hands::until([&] {
      hands::settle(*fLyrics);
      Settle();
      return Line() == line;
    });
  }

  TLyricsWindow* fLyrics;
};

} // namespace

TEST_F(LyricsWindowByHand, ShowsTheCurrentLineOfTheLyricsFile) {
  EXPECT_TRUE(Shows("No song is playing"));
  fFolder.Write("song.lrc", "[00:01]one\n[00:02:50]two\nplain\n");
  fHost->SetRecord(0, "song");
  EXPECT_TRUE(Shows("")) << "before the first line";
  fHost->SetRecord(2600, "song");
  EXPECT_TRUE(Shows("two"));
  fFolder.Write("song.lrc", "[00:01]one\n[00:02]second\n");
  EXPECT_TRUE(Shows("second")) << "the file has changed";
  fHost->SetRecord(2600, "other");
  EXPECT_TRUE(Shows("No lyrics file found next to this song"));
}

TEST_F(LyricsWindowByHand, RefrainIsShownEachTimeWithoutTagsAndWithTheOffsetApplied) {
  fFolder.Write("song.lrc", "[offset:500]\n[00:02][00:06]re<00:02.50>frain\n[00:04]verse\n");
  for (const auto& [positionMs, line] : {std::pair(1500, "refrain"), {3500, "verse"}, {5500, "refrain"}}) {
    fHost->SetRecord(positionMs, "song");
    EXPECT_TRUE(Shows(line)) << positionMs;
  }
}

TEST_F(LyricsWindowByHand, FollowsTheEditorUntilItCloses) {
  const std::string path = fFolder.Write("song.lrc", "one\n[00:09]two\n");
  PlayAt(5000, "song");
  EXPECT_TRUE(Shows(""));
  Open(path);
  Press("Space");
  EXPECT_TRUE(Shows("one")) << "stamped but not saved";
  SendToView(BMessage(kMsgUndo));
  EXPECT_TRUE(Shows(""));
  hands::press_close_button(*fLyrics);
  hands::settle(*fLyrics);
  EXPECT_FALSE(hands::is_shown(*fLyrics));
  fLyrics->Show();
  SendToView(BMessage(kMsgRedo));
  EXPECT_TRUE(Shows("one")) << "also after it was closed and opened again";
  Answer("N", [this] { PressCloseButton(); });
  EXPECT_TRUE(Shows("")) << "the file again";
}

TEST_F(LyricsWindowByHand, AfterAMissedNoticeItRequestsTheWholeDocument) {
  PlayAt(5000, "song");
  Open(fFolder.Write("song.lrc", "one\n[00:09]two\n"));
  EXPECT_TRUE(Shows(""));
  fLyrics->PostMessage(kMsgDocumentClosed); // now it knows no document that the next notice could change
  hands::settle(*fLyrics);
  Press("Space");
  EXPECT_TRUE(Shows("one"));
}

TEST_F(LyricsWindowByHand, SongThatBeginsDuringASearchIsSearchedForNext) {
  fFolder.Write("other.lrc", "[00:01]one\n");
  Sonivo_FrontEnd link(false, 100000);
  link.Start();
  {
    const OwnLooper<Keeping<BLooper>> owner(new Keeping<BLooper>);
    TSongLyrics lyrics(&link, owner.get());
    const auto takeAnswer = [&] {
      const bool hasCome = hands::until([&] { return owner->DeliverNext(); });
      EXPECT_TRUE(hasCome);
      lyrics.SearchAnswered(hasCome ? owner->Taken().front() : BMessage());
    };
    fHost->SetRecord(0, "other");
    EXPECT_TRUE(hands::until([&] {
      link.Refresh();
      return link.Title() == "other";
    }));
    lyrics.SongIs("song");
    lyrics.SongIs("other");
    takeAnswer();
    EXPECT_EQ(lyrics.Path(), "") << "the first answer was for another song";
    takeAnswer();
    EXPECT_EQ(lyrics.Path(), fFolder.File("other.lrc"));
    link.StopWaiting();
  }
}

TEST_F(LyricsWindowByHand, PlainLyricsAreScrolledByKeys) {
  std::string lyrics;
  for (int i = 0; i < 40; ++i) lyrics += "line " + std::to_string(i) + "\n";
  fFolder.Write("song.lrc", lyrics);
  fHost->SetRecord(0, "song");
  EXPECT_TRUE(Shows(""));
  const std::string first = Pixels();
  const std::string second = After("Down");
  EXPECT_NE(second, first);
  EXPECT_EQ(After("Up"), first);
  EXPECT_EQ(After("Up"), first) << "there is nothing above";
  EXPECT_NE(After("PgDown"), first);
  for (int i = 0; i < 7; ++i) After("Up");
  EXPECT_EQ(Pixels(), second) << "a page is eight lines";
  EXPECT_EQ(After("PgUp"), first);
}

TEST_F(LyricsWindowByHand, TextIsEnlargedWrappedAndTranslatedAtOnce) {
  const auto state = std::make_unique<TLyricsWindowState>();
  gLyricsWindowState = state.get();
  fFolder.Write("song.lrc", "a line that is wrapped in a narrow window and not in a wide one\n");
  fHost->SetRecord(0, "song");
  EXPECT_TRUE(Shows(""));
  const std::string normal = Pixels();
  const std::string larger = After("Ctrl++");
  EXPECT_NE(larger, normal);
  EXPECT_NE(After("Ctrl++"), larger);
  EXPECT_EQ(After("Ctrl+-"), larger);
  EXPECT_EQ(state->fZoom, 1);
  EXPECT_EQ(After("Ctrl+0"), normal);
  const BRect frame = fLyrics->Frame();
  After("F11");
  EXPECT_EQ(fLyrics->NormalFrame(), frame);
  After("Escape");
  hands::resize_by_hand(*fLyrics, 900, 300);
  const std::string resized = Pixels();
  fLyrics->PostMessage(kMsgAppearance);
  EXPECT_EQ(Pixels(), resized) << "wrapped anew at once";
  fLyrics->PostMessage(kMsgLyricsMenu);
  Pixels();
  EXPECT_TRUE(hands::popup_is_open());
  hands::press_in_menu("Escape");
  fHost->SetRecord(0, "");
  EXPECT_TRUE(Shows("No song is playing"));
  gLLT->Load(TEXTS_FOLDER "/German.llt");
  fLyrics->SetTitle("");
  fLyrics->PostMessage(kMsgLanguageChanged);
  EXPECT_TRUE(Shows("Es läuft kein Titel"));
  EXPECT_EQ(fLyrics->Title(), gLLT->Text("Display_Win_Title"));
  gLyricsWindowState = nullptr;
}

TEST_F(LyricsWindowByHand, AppliesFontAndColoursAtOnce) {
  std::set<std::string> seen;
  const auto changes = [&](void (*set)(TPrefValues*)) {
    seen.insert(hands::pixels(*fLyrics, "Lyrics"));
    SetPref(set);
    fLyrics->PostMessage(kMsgAppearance);
    hands::settle(*fLyrics);
    return !seen.contains(hands::pixels(*fLyrics, "Lyrics"));
  };
  fFolder.Write("song.lrc", "[00:01]one\n[00:02]two\n");
  fHost->SetRecord(2600, "song");
  EXPECT_TRUE(Shows("two"));
  EXPECT_TRUE(changes([](TPrefValues* values) { values->lyrics = {0, 200, 0, 255}; }));
  EXPECT_TRUE(changes([](TPrefValues* values) { values->activeLyrics = {0, 0, 200, 255}; }));
  EXPECT_TRUE(changes([](TPrefValues* values) { values->background = {90, 90, 90, 255}; }));
  EXPECT_TRUE(changes([](TPrefValues* values) { values->fontSize = 20; }));
}
