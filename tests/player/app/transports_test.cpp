/** The own sound and another player as the source, each by itself. */

#include "platform/app/message.h"
#include "player/app/own_transport.h"
#include "player/app/source_switch.h"
#include "player/bus/bus.h"
#include "player/list/tag_fields.h"
#include "player/model/bus_messages.h"
#include "player/model/player_messages.h"
#include "player/sound/now_playing.h"
#include "tests/player/app/recorder.h"
#include "tests/player/sound/still_source.h"
#include "tests/support/messages.h"
#include "tests/support/songs.h"

using namespace testing;

namespace {

/** Reports of StillSource are not delivered: the tests make their own. */
struct TUnheard : TSongEvents {
  void SongLoaded(int64, const TSongTags&) override {}
  void SongEnded(int64) override {}
  void SongFailed(int64, const std::string&) override {}
};

struct Transports : testing::Test {
  Transports() { fSongs.Insert(songs_of({"/a.mp3", "/b.mp3", "/c.mp3"}), 0); }

  void Report(uint32 what, int64 load) {
    BMessage message = message_of(what, "load", load);
    add_tags(&message, {"Title", "Artist", StillSource::kDurationMs, "Album", 1});
    EXPECT_TRUE(fOwn.Handle(message));
  }
  void ReportPlayers(std::initializer_list<const char*> ids, bool isReachable = true) {
    BMessage message = message_of(kMsgBusPlayers, "reachable", isReachable);
    for (const char* const id : ids) add_fields(&message, "id", id, "name", std::string("Player ") + id);
    EXPECT_TRUE(fSource.Handle(message));
  }
  void ReportOther(const char* id, int32 state, bool isSilent = false) {
    EXPECT_TRUE(fSource.Handle(message_of(kMsgBusOtherIs, "id", id, "title", "Other song", "durationMs", 90000, "state",
                                          state, "silent", isSilent)));
  }
  TPlayerState State() const {
    TPlayerState state;
    fSource.AddTo(&state);
    return state;
  }

  TPlaylist fSongs;
  TRecorder fRecorder;
  TUnheard fUnheard;
  StillSource::Account fAccount;
  TOwnTransport fOwn{&fSongs, std::make_shared<StillSource>(&fUnheard, &fAccount), &fRecorder};
  TBus fBus{BMessenger(), [] { return 0; }}; // not started: shows where a player would be sought to
  TNowPlaying fNowPlaying{fOwn.Sound()};
  TSourceSwitch fSource{&fOwn, &fBus, &fNowPlaying, &fRecorder, "vlc"};
};

} // namespace

TEST_F(Transports, ErrorsSayWhatIsWrongWithTheSong) {
  fOwn.PlaySong(0, true);
  Report(kMsgSongFailed, fOwn.LoadNumber());
  EXPECT_THAT(fRecorder.errors, ElementsAre(HasSubstr("Cannot play /a.mp3")));
  Report(kMsgSongLoaded, fOwn.LoadNumber());
  fAccount.positionMs = StillSource::kDurationMs - 5000;
  Report(kMsgSongEnded, fOwn.LoadNumber());
  EXPECT_THAT(fRecorder.errors.back(), HasSubstr("truncated"));
}

TEST_F(Transports, ALostDeviceIsNamedUntilItIsBack) {
  fOwn.Handle(message_of(kMsgDeviceLost, "device", "USB"));
  EXPECT_THAT(fRecorder.errors, ElementsAre(HasSubstr("“USB” is not available")));
  fOwn.Handle(message_of(kMsgDeviceReturned, "device", "USB"));
  EXPECT_THAT(fRecorder.errors, ElementsAre(HasSubstr("“USB” is available again")));
}

TEST_F(Transports, TheDesktopSkipsFromPausedSongToPausedSong) {
  fOwn.PlaySong(0, false);
  fOwn.SkipAsItIs(1);
  EXPECT_TRUE(fOwn.Playback().isPlaying);
  fOwn.PlayPause();
  fOwn.SkipAsItIs(1);
  EXPECT_EQ(fSongs.Current(), 2);
  EXPECT_FALSE(fOwn.Playback().isPlaying);
}

TEST_F(Transports, OnlyTheNextSongOfTheAlbumIsQueuedNearTheEnd) {
  for (int32 i = 0; i < 3; ++i) fSongs.Edit(i)->album = i < 2 ? "Album" : "Other album";
  for (const auto& [index, follower] : {std::pair{0, "/b.mp3"}, {1, ""}}) {
    fAccount.followed.clear();
    fOwn.PlaySong(index, false);
    Report(kMsgSongLoaded, fOwn.LoadNumber());
    fAccount.positionMs = StillSource::kDurationMs - 1000;
    fOwn.Tick();
    EXPECT_EQ(fAccount.followed, follower);
  }
}

TEST_F(Transports, TheKeptPositionIsResumedInTheListsSongEvenIfAnotherPlayerIsTheSourceByThen) {
  fOwn.PlaySong(0, true, 12000);
  ReportPlayers({"vlc"});
  Report(kMsgSongLoaded, fOwn.LoadNumber());
  EXPECT_EQ(fAccount.positionMs, 12000);
  EXPECT_EQ(fBus.PositionMs(), 0) << "the other player's song stays where it is";
  EXPECT_EQ(fNowPlaying.Record().positionMs, 0) << "that of the source";
  Report(kMsgSongLoaded, fOwn.LoadNumber());
  EXPECT_THAT(fRecorder.soughtMs, ElementsAre(12000)) << "once";
}

TEST_F(Transports, AnotherPlayerIsTheSourceFromWhenItAppearsUntilItLeaves) {
  ReportPlayers({"mpv"});
  EXPECT_THAT(fRecorder.errors, ElementsAre(HasSubstr("Waiting for the player “vlc”")));
  fOwn.PlaySong(0, false);
  ReportPlayers({"mpv", "vlc"});
  EXPECT_EQ(fRecorder.choices, 1);
  EXPECT_FALSE(fOwn.Playback().isPlaying) << "one sound at a time";
  ReportOther("mpv", TInfoRecord::kPlaying);
  EXPECT_FALSE(State().isLoaded) << "not the one that was chosen";
  ReportOther("vlc", TInfoRecord::kPlaying);
  EXPECT_TRUE(State().isPlaying);
  EXPECT_EQ(shown_song(State())->title, "Other song");
  fSource.Transport().Seek(100000);
  EXPECT_EQ(fBus.PositionMs(), 90000) << "bounded to its song";
  EXPECT_EQ(fAccount.seeks, 0);
  fRecorder.errors.clear();
  ReportOther("vlc", TInfoRecord::kPlaying, true);
  EXPECT_FALSE(State().isPlaying) << "its position is unknown";
  ReportOther("vlc", TInfoRecord::kPlaying, true);
  EXPECT_THAT(fRecorder.errors, ElementsAre("Player vlc is not responding"));
  ReportOther("vlc", TInfoRecord::kPaused);
  EXPECT_THAT(fRecorder.errors, IsEmpty());
  ReportPlayers({}, false);
  EXPECT_THAT(fRecorder.errors, ElementsAre(HasSubstr("session bus was lost")));
  EXPECT_EQ(State().source, "");
  EXPECT_EQ(&fSource.Transport(), &fOwn);
  EXPECT_EQ(fRecorder.choices, 1) << "it was chosen for good, not for whenever it comes again";
}
