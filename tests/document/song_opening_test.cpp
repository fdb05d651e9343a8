#include "document/editor_view.h"
#include "document/song_opener.h"
#include "editviews/tag_input_view.h"
#include "plugin/message_codes.h"
#include "tests/support/editor_fixture.h"

#include <gmock/gmock.h>

#include <algorithm>
#include <functional>

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
  /** As the manager does once a search has found them. */
  void Offer(const std::string& name, int32 document) {
    BMessage found = message_of(kMsgOpenSongLyrics, "refs", ref_of(fFolder.File(name)));
    found.AddInt32("Document", document);
    Send(found);
  }
  int32 Document() const { return static_cast<TVesmoEView*>(fWindow->FindView("VesmoEditorView"))->DocumentNumber(); }
};

TEST_F(SongOpening, LyricsOfThePlayingSongOpenInANewWindow) {
  PlayAt(1000, "a");
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
  EXPECT_THAT(Lines(), ElementsAre("one", "two"));
  EXPECT_EQ(Title(), "a.txt - Vesmo Editor");
  EXPECT_THAT(Status(), EndsWith("Opened the lyrics of the current song: a.txt"));
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

TEST_F(SongOpening, WhatWouldRaiseAQuestionStaysClosed) {
  fFolder.Write("short.txt", "");
  fFolder.Write("short.txt.before-save", "longer\n");
  fFolder.Write("song.txt", std::string("ID3\x03\0\0\0\0\0\0", 10));
  for (const char* name : {"missing.txt", "short.txt", "song.txt"}) {
    Offer(name, Document());
    EXPECT_EQ(Title(), "Untitled - Vesmo Editor") << name;
  }
}
