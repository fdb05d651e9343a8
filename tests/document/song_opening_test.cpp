#include "document/editor_view.h"
#include "document/song_opener.h"
#include "editviews/tag_input_view.h"
#include "tests/support/editor_fixture.h"

using namespace testing;

TEST(SongOpener, SearchesOnceForASongThatPlaysForAMoment) {
  constexpr bigtime_t kMoment = 500000;
  TSongOpener opener;
  EXPECT_FALSE(opener.IsDue("a", true, 1, 0));
  EXPECT_FALSE(opener.IsDue("a", true, 1, kMoment - 1));
  EXPECT_FALSE(opener.IsDue("a", false, 1, kMoment)) << "paused";
  EXPECT_TRUE(opener.IsDue("a", true, 1, kMoment));
  EXPECT_FALSE(opener.IsDue("a", true, 1, 2 * kMoment));
  EXPECT_FALSE(opener.IsDue("b", true, 1, 3 * kMoment));
  EXPECT_FALSE(opener.IsDue("b", true, 2, 4 * kMoment)) << "the user has opened something";
  EXPECT_FALSE(opener.IsDue("", true, 2, 5 * kMoment));
  EXPECT_FALSE(opener.IsDue("", true, 2, 6 * kMoment)) << "no song";
}

struct SongOpening : EditorByHand {
  SongOpening() {
    fHost->SetPlaying(true);
    fHost->fEntries = {{fFolder.Write("a.ogg", ""), "a"}};
    fFolder.Write("a.txt", "one\ntwo\n");
    fFolder.Write("b.txt", "b\n");
  }
  /** Plays the song, and passes what the editor offers then back to it, as the manager does. */
  void PlayUntilOpened(const std::string& title) {
    PlayAt(1000, title);
    const auto offer = [this]() -> const BMessage* {
      fManager->DeliverAll();
      const auto found = std::ranges::find(fManager->fReceived, kMsgOfferSongLyrics, &BMessage::what);
      return found == fManager->fReceived.end() ? nullptr : &*found;
    };
    ASSERT_TRUE(Until([&] {
      SendToView(BMessage(kMsgRefreshInfo));
      return offer() != nullptr;
    }));
    BMessage passedOn(*offer());
    passedOn.what = kMsgOpenSongLyrics;
    Send(passedOn);
  }
  /** As the manager does once a search has found them. */
  void Offer(const std::string& name, int32 document) {
    BMessage found = message_of(kMsgOpenSongLyrics, "refs", ref_of(fFolder.File(name)));
    found.AddInt32("Document", document);
    Send(found);
  }
};

TEST_F(SongOpening, LyricsInsideThePlayingSongOpenWhereItHasNoFile) {
  const std::string frame = std::string("USLT\0\0\0\x0F\0\0\0eng\0", 15) + "inside\ntwo";
  fHost->fEntries = {{fFolder.Write("c.mp3", std::string("ID3\x03\0\0\0\0\0\x19", 10) + frame), "c"}};
  PlayUntilOpened("c");
  EXPECT_THAT(Lines(), ElementsAre("inside", "two"));
  EXPECT_EQ(Title(), "Untitled - Vesmo Editor");
  EXPECT_FALSE(IsModified());
  EXPECT_EQ(static_cast<TVesmoEView*>(fWindow->FindView("VesmoEditorView"))->SongFolder(), fFolder.Path());
  EXPECT_THAT(Status(), EndsWith("Lyrics from inside the song c.mp3"));
  Offer("a.txt", Document());
  EXPECT_EQ(Lines().front(), "inside") << "the document is no longer a new one";
  SetPref([](TPrefValues* values) { values->songOpening = kOpenWithEverySong; });
  Offer("a.txt", Document());
  EXPECT_EQ(Lines().front(), "one") << "it was not changed, and is still in its song";
}

TEST_F(SongOpening, LyricsInsideASongEndTheNoticeAboutTheFileBefore) {
  const std::string frame = std::string("USLT\0\0\0\x0F\0\0\0eng\0", 15) + "inside\ntwo";
  fHost->fEntries = {{fFolder.Write("c.mp3", std::string("ID3\x03\0\0\0\0\0\x19", 10) + frame), "c"}};
  PlayAt(1000, "c");
  Open(fFolder.Write("b.txt", "[00:01.00]two\n[00:02:00]forms\n"));
  fFolder.Write("b.txt", "theirs\n");
  const auto isNoticed = [this] { return !fWindow->FindView("NoticeBar")->IsHidden(); };
  ASSERT_TRUE(Until([&] {
    SendToView(BMessage(kMsgLookAtFile));
    return isNoticed();
  }));
  SendToView(BMessage(kMsgOpenCurrent));
  EXPECT_TRUE(Until([this] { return Lines().front() == "inside"; }));
  Settle();
  EXPECT_FALSE(isNoticed());
}

TEST_F(SongOpening, NothingOpensOverWhatTheUserHasInTheWindow) {
  const auto type = [this] { Press("Insert"); };
  const struct {
    const char* what;
    int32 setting;
    std::function<void()> act;
    bool opens;
  } rows[] = {
      {"new", kOpenInNewDocument, [] {}, true},
      {"never", kNeverOpen, [] {}, false},
      {"typed", kOpenWithEverySong, type, false},
      {"typed and undone", kOpenInNewDocument, [&] { type(), Press("Ctrl+Z"); }, false},
      {"opened", kOpenInNewDocument, [&] { Open(fFolder.File("b.txt")); }, false},
      {"opened, with every song", kOpenWithEverySong, [&] { Open(fFolder.File("b.txt")); }, true},
      {"changed", kOpenWithEverySong, [&] { Open(fFolder.File("b.txt")), Change(); }, false},
  };
  for (const auto& row : rows) {
    SCOPED_TRACE(row.what);
    fFolder.Write("b.txt", "b\n");
    SetPref([&](TPrefValues* values) { values->songOpening = row.setting; });
    row.act();
    const int32 before = Document();
    Offer("a.txt", before - 1);
    EXPECT_EQ(Document(), before) << "it was found for another document";
    Offer("a.txt", before);
    EXPECT_EQ(Document() != before, row.opens);
    EditView().SetModified(false);
    Send(BMessage(kMsgNew));
  }
}

TEST_F(SongOpening, ASearchThatNobodyAskedForEndsWithoutAWordHoweverSlowThePlayerIs) {
  PlayAt(1000, "a");
  ASSERT_TRUE(fHost->Lock()); // it answers nothing more
  const bigtime_t due = system_time() + 600000;
  Until([due] { return system_time() >= due; });
  SendToView(BMessage(kMsgRefreshInfo)); // begins the search
  SendToView(BMessage(kMsgPlayerSilent));
  EXPECT_THAT(Status(), Not(HasSubstr("does not answer")));
  SendToView(BMessage(kMsgNoSong)); // does not return while an error is shown
  fHost->Unlock();
}

TEST_F(SongOpening, WhatWouldRaiseAQuestionStaysClosed) {
  fFolder.Write("short.txt", "");
  fFolder.Write("short.txt.before-save", "longer\n");
  fFolder.Write("song.txt", std::string("ID3\x03\0\0\0\0\0\0", 10));
  for (const char* name : {"missing.txt", "short.txt", "song.txt"}) {
    Offer(name, Document());
    EXPECT_EQ(Title(), "Untitled - Vesmo Editor") << name;
  }
}
