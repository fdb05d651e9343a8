/** The list and its playback against a model, in random order: the user's commands, and what the sound reports, late
    reports about songs that were replaced included. */

#include "platform/app/message.h"
#include "player/app/list_editor.h"
#include "player/app/own_transport.h"
#include "player/app/player_events.h"
#include "player/list/tag_fields.h"
#include "player/model/player_messages.h"
#include "player/sound/song_source.h"
#include "tests/support/long_tests.h"
#include "tests/support/messages.h"
#include "tests/support/random_seed.h"
#include "tests/support/songs.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <algorithm>
#include <functional>
#include <map>
#include <random>

namespace {

constexpr int32 kDurationMs = 60000;

/** Remembers what it was told to do. */
struct ToldSource final : TSongSource {
  int64 Load(const std::string& song, bool paused) override {
    Forget();
    path = song;
    isPaused = paused;
    return load = ++loads;
  }
  void Stop() override { Forget(); }
  int64 Follow(const std::string& song) override {
    followed = song;
    return follower = song.empty() ? 0 : ++loads;
  }
  void SetPaused(bool paused) override { isPaused = paused; }
  void SeekTo(int32 toMs) override { positionMs = toMs; }
  void SetSpeed(double) override {}
  void SetVolume(double) override {}
  void SetRepeat(int32, int32 toMs) override { repeatToMs = toMs; }
  int32 PositionMs() override { return positionMs; }
  void Forget() {
    path.clear();
    followed.clear();
    positionMs = 0;
  }
  std::string path, followed;
  int64 load = 0, follower = 0, loads = 1; // load 0 is none
  bool isPaused = false;
  int32 positionMs = 0, repeatToMs = -1;
};

struct CountedEvents final : TPlayerEvents {
  void StateChanged() override { ++changes; }
  void ErrorOccurred(const std::string&) override {}
  void SongErrorOccurred(const std::string& error) override {
    songErrors += error.find("deleted") == std::string::npos;
  }
  void ErrorResolved(const std::string& /*error*/) override {}
  void ErrorsResolved() override {}
  void UserChose() override {}
  void SongBegins() override { ++begun; }
  void SongIsHeard() override {}
  void SongSought(int32 positionMs) override { soughtMs = positionMs; }
  void PositionJumped(int32) override {}
  int changes = 0, songErrors = 0, begun = 0;
  int32 soughtMs = -1;
};

struct ModelSong {
  std::string path;
  bool isBad = false;
  bool isPlayed = false;
};

class AnyUse : public testing::Test {
protected:
  size_t Random(size_t below) { return fRandom() % below; }
  int32 Count() const { return static_cast<int32>(fModel.size()); }
  int32 Place() { return static_cast<int32>(Random(fModel.size() + 1)); }
  ModelSong& Current() { return fModel[static_cast<size_t>(fCurrent)]; }
  int32 Good(int32 at, int32 by) const {
    while (at >= 0 && at < Count() && fModel[static_cast<size_t>(at)].isBad) at += by;
    return at >= 0 && at < Count() ? at : -1;
  }
  int32 Neighbour(int32 by) const {
    const int32 next = Good(fCurrent + by, by);
    return next >= 0 || fModes.repeat != TRepeat::kList ? next : Good(by > 0 ? 0 : Count() - 1, by);
  }
  int32 AfterEnd() {
    if (fModes.stopsAfterSong) return -1;
    return fModes.repeat == TRepeat::kSong && !Current().isBad ? fCurrent : Neighbour(1);
  }

  void Expect(int32 song, bool paused) {
    if (song < 0 || song >= Count()) return;
    fCurrent = song;
    fIsLoaded = true;
    fIsHeard = false;
    fIsPlaying = !paused;
    fRepeatToMs = -1;
    fPositionMs = 0;
    ++fBegun;
  }
  void ExpectStop() {
    fIsLoaded = fIsPlaying = fIsHeard = false;
    fRepeatToMs = -1;
  }
  void ExpectSeek(int64 toMs) {
    if (fIsLoaded) fPositionMs = static_cast<int32>(std::clamp<int64>(toMs, 0, fIsHeard ? kDurationMs : Known()));
  }
  /** The duration is known before the song is heard if it has been heard before. */
  int32 Known() { return Current().isPlayed ? kDurationMs : 0; }
  void ExpectSkip(int32 by) {
    if (by < 0 && fIsLoaded && fSound->positionMs > 3000) return ExpectSeek(0);
    Expect(Neighbour(by), false);
  }
  void ExpectPlayOn() {
    const int32 next = AfterEnd();
    fModes.stopsAfterSong = false;
    if (next >= 0) return Expect(next, !fIsPlaying);
    fIsLoaded = fIsPlaying = fIsHeard = false;
    fSound->load = 0; // it has nothing more to report
  }

  void Insert();
  void Remove();
  void Move();
  void Control();
  void Choose();
  void Report();
  void Tick();
  void Check();
  void Step();

  BMessage ReportOf(uint32 what, int64 load) {
    BMessage message = message_of(what, "load", load, "next", fSound->follower, "endedMs", fSound->positionMs);
    add_tags(&message, {"Title of " + fSound->path, "", kDurationMs, "Album", 1});
    return message;
  }

  const RandomSeed fSeed{};
  std::mt19937 fRandom{fSeed.value};
  std::vector<ModelSong> fModel;
  int32 fCurrent = -1;
  bool fIsLoaded = false, fIsPlaying = false, fIsHeard = false;
  int32 fRepeatToMs = -1, fPositionMs = 0;
  int fBegun = 0, fNames = 0, fSongErrors = 0;
  TPlayingModes fModes;

  TPlaylist fSongs;
  CountedEvents fEvents;
  std::shared_ptr<ToldSource> fSound = std::make_shared<ToldSource>();
  TOwnTransport fOwn{&fSongs, fSound, &fEvents};
  TListEditor fList{&fSongs, &fOwn, BMessenger(), &fEvents};
};

void AnyUse::Insert() {
  const int32 place = Place();
  const std::string path = "/music/" + std::to_string(++fNames) + ".mp3";
  TSongs songs = songs_of({path});
  songs[0].album = "Album";
  fSongs.Insert(songs, place);
  fModel.insert(fModel.begin() + place, {path});
  if (fCurrent >= place) ++fCurrent;
}

/** The one that plays included. */
void AnyUse::Remove() {
  if (fModel.empty()) return;
  const bool isCleared = Random(20) == 0;
  const auto first = isCleared ? 0 : static_cast<int32>(Random(fModel.size()));
  const int32 end = isCleared ? Count() : std::min(first + 2, Count());
  BMessage remove(kMsgRemoveSongs);
  for (int32 i = first; i < end; ++i) remove.AddInt64("id", fSongs.At(i)->id);
  const bool goesOn = fCurrent < first || fCurrent >= end;
  fModel.erase(fModel.begin() + first, fModel.begin() + end);
  if (fCurrent >= first) fCurrent = goesOn ? fCurrent - (end - first) : std::min(first, Count() - 1);
  if (fCurrent < 0) ExpectStop();
  if (fCurrent >= 0 && !goesOn && fIsLoaded) Expect(fCurrent, !fIsPlaying);
  fList.Handle(isCleared ? BMessage(kMsgClearSongs) : remove);
}

void AnyUse::Move() {
  if (fModel.empty()) return;
  const size_t from = Random(fModel.size());
  const int32 to = Place();
  const std::string current = fCurrent >= 0 ? Current().path : "";
  fList.Handle(message_of(kMsgMoveSongs, "id", fSongs.At(static_cast<int32>(from))->id, "before", to));
  const ModelSong moved = fModel[from];
  fModel.insert(fModel.begin() + to, moved);
  fModel.erase(fModel.begin() + static_cast<long>(from + (static_cast<int32>(from) >= to ? 1 : 0)));
  for (int32 i = 0; i < Count(); ++i)
    if (fModel[static_cast<size_t>(i)].path == current) fCurrent = i;
}

void AnyUse::Control() {
  const auto index = static_cast<int32>(Random(fModel.size() + 1));
  const int32 toMs = static_cast<int32>(Random(80000)) - 10000;
  const std::function<void()> acts[] = {[&] { Expect(index, false), fOwn.PlaySong(index, false); },
                                        [&] {
                                          if (!fIsLoaded)
                                            Expect(std::max(fCurrent, 0), false);
                                          else
                                            fIsPlaying = !fIsPlaying;
                                          fOwn.PlayPause();
                                        },
                                        [&] { ExpectStop(), fOwn.Stop(); },
                                        [&] { ExpectSkip(1), fOwn.Skip(1); },
                                        [&] { ExpectSkip(-1), fOwn.Skip(-1); },
                                        [&] { ExpectSeek(toMs), fOwn.Seek(toMs); },
                                        [&] {
                                          const int64 thereMs = int64{fSound->positionMs} + toMs;
                                          if (fIsLoaded && thereMs > kDurationMs && (fIsHeard || Current().isPlayed))
                                            ExpectSkip(1);
                                          else
                                            ExpectSeek(thereMs);
                                          fOwn.SeekBy(toMs);
                                        },
                                        [&] {
                                          if (fIsLoaded)
                                            fRepeatToMs = fSound->positionMs >= 50 ? fSound->positionMs : -1;
                                          fOwn.SetRepeat(kMsgRepeatOff, 0);
                                          fOwn.SetRepeat(kMsgRepeatTo, 0);
                                        }};
  acts[Random(std::size(acts))]();
}

void AnyUse::Choose() {
  fModes.repeat = static_cast<TRepeat>(Random(3));
  fModes.stopsAfterSong = Random(4) == 0;
  fOwn.SetChoices({.modes = fModes});
}

/** Near the end of a song, the next one of its album is queued. */
void AnyUse::Tick() {
  fOwn.Tick();
  if (!fIsHeard) return;
  const int32 next = kDurationMs - fSound->positionMs < 8000 && fRepeatToMs < 0 ? AfterEnd() : -1;
  ASSERT_EQ(fSound->followed, next < 0 ? "" : fModel[static_cast<size_t>(next)].path);
}

/** The song begins, fails or ends; sometimes it was replaced before the report arrives. */
void AnyUse::Report() {
  if (Random(2) == 0) Tick();
  if (fSound->load == 0) return;
  const int64 stale = fSound->load - static_cast<int64>(Random(6) == 0);
  const bool isStale = stale != fSound->load || !fIsLoaded;
  if (!fIsHeard) {
    const bool fails = Random(4) == 0;
    if (!isStale) {
      Current().isBad = fails;
      fails ? ExpectPlayOn() : void(fIsHeard = Current().isPlayed = true);
      if (fails) ++fSongErrors;
    }
    fOwn.Handle(ReportOf(fails ? kMsgSongFailed : kMsgSongLoaded, stale));
    return;
  }
  fSound->positionMs = Random(2) ? kDurationMs : static_cast<int32>(Random(kDurationMs));
  fPositionMs = fSound->positionMs;
  if (Random(2)) return Tick();
  const bool isEarly = kDurationMs - fPositionMs >= 3000;
  const bool joins = !fSound->followed.empty() && !isStale;
  const BMessage report = ReportOf(joins ? kMsgSongJoined : kMsgSongEnded, stale);
  if (!isStale && isEarly) ++fSongErrors;
  if (!isStale) ExpectPlayOn();
  if (joins && fIsLoaded) {
    fSound->load = fSound->follower;
    fSound->path = std::exchange(fSound->followed, "");
    fSound->positionMs = 0;
  }
  fOwn.Handle(report);
  ASSERT_TRUE(!joins || fIsLoaded || fSound->path.empty()) << "the queued song is heard";
}

void AnyUse::Check() {
  ASSERT_EQ(fSongs.Count(), Count());
  for (int32 i = 0; i < Count(); ++i) {
    const ModelSong& song = fModel[static_cast<size_t>(i)];
    ASSERT_EQ(fSongs.At(i)->path, song.path);
    ASSERT_EQ(fSongs.At(i)->error.empty(), !song.isBad) << song.path;
    ASSERT_EQ(fSongs.At(i)->played, song.isPlayed) << song.path;
  }
  const TPlayback shown = fOwn.Playback();
  ASSERT_EQ(fSongs.Current(), fCurrent);
  ASSERT_EQ(shown.isLoaded, fIsLoaded);
  ASSERT_EQ(shown.isPlaying, fIsPlaying);
  ASSERT_EQ(shown.repeatToMs, fRepeatToMs);
  ASSERT_EQ(fEvents.begun, fBegun);
  ASSERT_EQ(fOwn.Choices().modes, fModes);
  if (!fIsLoaded) return;
  ASSERT_EQ(fSound->path, Current().path);
  ASSERT_EQ(fSound->isPaused, !fIsPlaying);
  ASSERT_EQ(fSound->positionMs, fPositionMs);
  ASSERT_EQ(fSound->repeatToMs, fRepeatToMs);
  ASSERT_EQ(shown.durationMs, fIsHeard ? kDurationMs : shown.durationMs);
}

void AnyUse::Step() {
  const auto seen = [this] {
    const TPlayback shown = fOwn.Playback();
    return std::tuple(fSongs.Current(), shown.isLoaded, shown.isPlaying, shown.durationMs, shown.repeatToMs,
                      fOwn.LoadNumber());
  };
  if (Random(5) == 0 && Count() < 9) return Insert();
  const auto before = seen();
  const int changes = fEvents.changes;
  const size_t kind = Random(12);
  if (kind == 0)
    Remove();
  else if (kind == 1)
    Move();
  else if (kind == 2)
    Choose();
  else if (kind < 7)
    Control();
  else
    Report();
  ASSERT_TRUE(seen() == before || fEvents.changes > changes) << "the window was not told";
}

} // namespace

TEST_F(AnyUse, OfTheListPlaysTheSongsThatTheModelSays) {
  SCOPED_TRACE(fSeed.Text());
  const int steps = long_tests() ? 500000 : 10000;
  for (int step = 0; step < steps && !HasFatalFailure(); ++step) {
    SCOPED_TRACE("step " + std::to_string(step));
    Step();
    if (!HasFatalFailure()) Check();
  }
  EXPECT_GT(fBegun, 1000);
  EXPECT_EQ(fEvents.songErrors, fSongErrors);
}
