/** The list of songs: what the user does to it, and how it lasts from one run to the next. */

#include "common/atomic_replace.h"
#include "platform/app/message.h"
#include "platform/app/message_runner.h"
#include "platform/kernel/threads.h"
#include "player/app/kept_list.h"
#include "player/app/sonivo_app.h"
#include "player/list/m3u.h"
#include "player/list/tag_fields.h"
#include "player/model/player_messages.h"
#include "player/model/song_text.h"
#include "player/window/player_window.h"

#include <filesystem>
#include <unordered_map>

namespace {

/** A list that is being put in order is written once that is done. */
constexpr bigtime_t kKeepDelayUs = 2000000;
constexpr bigtime_t kBetweenPiecesUs = 100000;
constexpr int32 kMostPaths = 100000; // of one message

std::vector<int64> ids_in(const BMessage& message) {
  std::vector<int64> ids;
  int64 id = 0;
  for (int32 i = 0; message.FindInt64("id", i, &id) == B_OK; ++i) ids.push_back(id);
  return ids;
}

std::vector<std::string> paths_in(const BMessage& message) {
  std::vector<std::string> paths;
  std::string path;
  for (int32 i = 0; i < kMostPaths && message.FindString("path", i, &path) == B_OK; ++i) paths.push_back(path);
  return paths;
}

int32 place_in(const BMessage& message) {
  int32 before = -1;
  message.FindInt32("before", &before);
  return before;
}

} // namespace

bool TSonivoApp::HandleList(const BMessage& message) {
  switch (message.what) {
  case kMsgAddSongs:
    AddSongs(message);
    return true;
  case kMsgRemoveSongs:
    RemoveSongs(message);
    return true;
  case kMsgMoveSongs:
    if (fPlaylist.Move(ids_in(message), place_in(message))) StateChanged();
    return true;
  case kMsgClearSongs:
    fSearch.Forget();
    fAwaited.clear();
    fPlaylist.Clear();
    ForgetFaults();
    StopPlaying();
    return true;
  case kMsgSongsFound:
    TakeFoundSongs();
    return true;
  case kMsgTagsFound:
    TakeTags(message);
    return true;
  case kMsgSaveList:
    SaveList(message);
    return true;
  case kMsgKeep:
    SaveKeptList();
    return true;
  case kMsgHandedOver:
    TakeOver(message);
    return true;
  default:
    return false;
  }
}

/** Many at a time: each time the whole list is shown anew. */
void TSonivoApp::TakeFoundSongs() {
  const bigtime_t waitUs = fTookSongsUs + kBetweenPiecesUs - system_time();
  if (waitUs > 0) {
    const BMessage again(kMsgSongsFound);
    fFinder = std::make_unique<BMessageRunner>(BMessenger(this), &again, waitUs, 1);
    return;
  }
  fTookSongsUs = system_time();
  for (TSongSearch::TPiece& piece : fSearch.Take()) TakePiece(std::move(piece));
  StateChanged();
}

void TSonivoApp::TakePiece(TSongSearch::TPiece piece) {
  const auto awaited = fAwaited.find(piece.search);
  if (awaited == fAwaited.end()) return;
  TAwaitedSongs& plan = awaited->second;
  for (const std::string& fault : piece.faults) TellFault(fault);
  const std::string first = piece.songs.empty() ? std::string() : piece.songs.front().path;
  if (plan.areHandedOver) {
    fPlaylist.Append(std::move(piece.songs), &plan.added);
  } else {
    if (fPlaylist.Count() == 0) fPlayedSearch = piece.search;
    fPlaylist.Insert(std::move(piece.songs), fPlaylist.IndexOf(plan.beforeId));
  }
  const bool startPaused = plan.startPaused;
  if (piece.isLast) fAwaited.erase(awaited);
  if (fPlayedSearch == piece.search) PlayFound(fPlaylist.GoodFrom(fPlaylist.Find(first)), startPaused);
}

/** -1 for what was found so far: nothing of it can be played. */
void TSonivoApp::PlayFound(int32 index, bool paused) {
  if (index < 0) return;
  fPlayedSearch = 0;
  PlaySong(index, paused);
}

void TSonivoApp::AddSongs(const BMessage& message) {
  ForgetFaults();
  const TSong* const before = fPlaylist.At(place_in(message));
  fAwaited[fSearch.Begin(paths_in(message))] = {.beforeId = before ? before->id : 0};
  StateChanged();
}

void TSonivoApp::RemoveSongs(const BMessage& message) {
  const TSong* const before = fPlaylist.CurrentSong();
  const int64 playing = before ? before->id : 0;
  if (!fPlaylist.Remove(ids_in(message))) return;
  const TSong* const now = fPlaylist.CurrentSong();
  if (now == nullptr) return StopPlaying();
  if (!fIsLoaded || now->id == playing) return StateChanged();
  PlaySong(fPlaylist.Current(), !fState.isPlaying);
}

void TSonivoApp::SaveList(const BMessage& message) {
  std::string path;
  if (message.FindString("path", &path) != B_OK) return;
  const std::string folder = std::filesystem::path(path).parent_path().string();
  if (atomic_replace(path, m3u_text(*fPlaylist.Songs(), folder)) != B_OK) TellFault("Cannot save the playlist " + path);
}

/** What the sound has told of a song meanwhile stands. */
void TSonivoApp::TakeTags(const BMessage& message) {
  std::unordered_map<int64, int32> numbers;
  for (const int64 id : ids_in(message)) numbers.emplace(id, static_cast<int32>(numbers.size()));
  for (int32 i = 0; i < fPlaylist.Count(); ++i) {
    const auto found = numbers.find(fPlaylist.At(i)->id);
    if (found == numbers.end() || fPlaylist.At(i)->played) continue;
    take_tags(tags_in(message, found->second), fPlaylist.Edit(i));
  }
  StateChanged();
}

/** The songs of another start of the program are played here. */
void TSonivoApp::TakeOver(const BMessage& message) {
  message.SendReply(B_REPLY);
  UserChoseSong();
  bool paused = false;
  message.FindBool("paused", &paused);
  std::vector<std::string> paths = paths_in(message);
  if (!paths.empty()) {
    fPlayedSearch = fSearch.Begin(std::move(paths));
    fAwaited[fPlayedSearch] = {.areHandedOver = true, .startPaused = paused};
  }
  std::string lyrics;
  if (message.FindString("lyrics", &lyrics) == B_OK) ShowLyrics(lyrics);
  RaiseWindow();
  StateChanged();
}

int32 TSonivoApp::FindKeptList() {
  fKeptPath = kept_list_path();
  TKeptList kept = load_kept_list(fKeptPath);
  fState.volumePercent = kept.volumePercent;
  const bool wasEmpty = fPlaylist.Count() == 0;
  fPlaylist.TakeUp(std::move(kept.songs));
  if (wasEmpty) fPlaylist.SetCurrent(kept.current);
  fKeptSongs = fPlaylist.Songs();
  fKeptCurrent = fPlaylist.Current();
  return kept.positionMs;
}

/** Has the list written before long, if it is another one than that on the disk. */
void TSonivoApp::Keep() {
  if (fKeptPath.empty() || (fKeptSongs == fPlaylist.Songs() && fKeptCurrent == fPlaylist.Current())) return;
  fKeptSongs = fPlaylist.Songs();
  fKeptCurrent = fPlaylist.Current();
  const BMessage keep(kMsgKeep);
  fKeeper = std::make_unique<BMessageRunner>(BMessenger(this), &keep, kKeepDelayUs, 1);
}

void TSonivoApp::SaveKeptList() {
  const int32 positionMs = fIsLoaded ? fSource->PositionMs() : 0;
  const TKeptList list{*fPlaylist.Songs(), fPlaylist.Current(), positionMs, fState.volumePercent};
  if (!save_kept_list(list, fKeptPath)) TellFault("Cannot save the playlist " + fKeptPath);
}
