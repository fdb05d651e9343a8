#include "player/app/list_editor.h"
#include "player/texts/player_texts.h"

#include "common/atomic_replace.h"
#include "platform/kernel/threads.h"
#include "player/app/own_transport.h"
#include "player/app/player_events.h"
#include "player/list/m3u.h"
#include "player/list/requests.h"
#include "player/list/tag_fields.h"
#include "player/model/player_messages.h"
#include "player/model/song_sorting.h"
#include "player/model/song_text.h"

#include <cerrno>
#include <cstring>
#include <filesystem>
#include <string_view>
#include <unordered_map>
#include <unordered_set>
#include <utility>

namespace {

/** Throttles what a search finds, since each batch refreshes the whole list. */
constexpr bigtime_t kBatchIntervalUs = 100000;
constexpr int32 kMostPaths = 100000; // of one message

std::vector<int64> ids_in(const BMessage& message) {
  std::vector<int64> ids;
  int64 id = 0;
  for (int32 i = 0; message.FindInt64("id", i, &id) == B_OK; ++i) ids.push_back(id);
  return ids;
}

int32 place_in(const BMessage& message) {
  return message.GetInt32("before", -1);
}

} // namespace

std::vector<std::string> paths_in(const BMessage& message) {
  std::vector<std::string> paths;
  std::string path;
  for (int32 i = 0; i < kMostPaths && message.FindString("path", i, &path) == B_OK; ++i) paths.push_back(path);
  return paths;
}

TListEditor::TListEditor(TPlaylist* songs, TOwnTransport* transport, const BMessenger& player, TPlayerEvents* events)
    : fSongs(songs), fTransport(transport), fEvents(events), fSearch([player] { ask(player, kMsgSongsFound); }),
      fTakeTimer(player) {}

int64 TListEditor::Open(std::vector<std::string> paths, bool startPaused) {
  const int64 search = fSearch.Begin(std::move(paths));
  fSearches[search] = {.isOpened = true, .startPaused = startPaused};
  return search;
}

bool TListEditor::PlayWhenFound(int64 search) {
  if (!fSearches.contains(search)) return false;
  fPlayedSearch = search;
  return true;
}

bool TListEditor::Handle(const BMessage& message) {
  fThread.Check();
  switch (message.what) {
  case kMsgAddSongs:
    Add(message);
    return true;
  case kMsgRemoveSongs:
    Remove(message);
    return true;
  case kMsgMoveSongs:
    Move(message);
    return true;
  case kMsgSortSongs:
    Sort(message);
    return true;
  case kMsgClearSongs:
    Clear();
    return true;
  case kMsgSongsFound:
    TakeFoundSongs();
    return true;
  case kMsgTagsFound:
    TakeTags(message);
    return true;
  case kMsgSaveList:
    Export(message);
    return true;
  default:
    return false;
  }
}

void TListEditor::TakeFoundSongs() {
  const bigtime_t waitUs = fTookSongsUs + kBatchIntervalUs - system_time();
  if (waitUs > 0) return fTakeTimer.StartOnce(kMsgSongsFound, waitUs);
  fTookSongsUs = system_time();
  for (TSongSearch::TPiece& piece : fSearch.Take()) TakePiece(std::move(piece));
  fEvents->StateChanged();
}

void TListEditor::TakePiece(TSongSearch::TPiece piece) {
  const auto search = fSearches.find(piece.search);
  if (search == fSearches.end()) return;
  TPlan& plan = search->second;
  for (const std::string& error : piece.errors) fEvents->ErrorOccurred(error);
  if (!piece.songs.empty()) fOrder.reset();
  const std::string first = piece.songs.empty() ? std::string() : piece.songs.front().path;
  if (plan.isOpened) {
    fSongs->Append(std::move(piece.songs), &plan.added);
  } else {
    if (fSongs->Count() == 0) fPlayedSearch = piece.search;
    fSongs->Insert(std::move(piece.songs), fSongs->IndexOf(plan.beforeId));
  }
  const bool startPaused = plan.startPaused;
  if (piece.isLast) fSearches.erase(search);
  if (fPlayedSearch == piece.search) PlayFound(first, startPaused);
}

/** The first one from there on that can be played; none yet may be found. */
void TListEditor::PlayFound(const std::string& firstPath, bool startPaused) {
  const int32 index = fSongs->GoodFrom(fSongs->Find(firstPath));
  if (index < 0) return;
  CancelPlay();
  fTransport->PlaySong(index, startPaused);
}

void TListEditor::AppendNew(TSongs songs) {
  const int32 before = fSongs->Count();
  std::unordered_set<std::string> added;
  fSongs->Append(std::move(songs), &added);
  if (fSongs->Count() != before) fOrder.reset();
}

void TListEditor::MarkMissing(const std::vector<std::string>& paths) {
  const std::unordered_set<std::string> missing(paths.begin(), paths.end());
  for (int32 i = 0; i < fSongs->Count() && !missing.empty(); ++i) {
    if (i != fSongs->Current() && missing.contains(fSongs->At(i)->path)) fSongs->Edit(i)->error = std::strerror(ENOENT);
  }
}

void TListEditor::MarkFound(const TSongs& songs) {
  std::unordered_set<std::string_view> found;
  for (const TSong& song : songs) found.insert(song.path);
  for (int32 i = 0; i < fSongs->Count() && !found.empty(); ++i) {
    if (!fSongs->At(i)->error.empty() && found.contains(fSongs->At(i)->path)) fSongs->Edit(i)->error.clear();
  }
}

void TListEditor::Add(const BMessage& message) {
  fEvents->ErrorsResolved();
  const TSong* const before = fSongs->At(place_in(message));
  fSearches[fSearch.Begin(paths_in(message))] = {.beforeId = before ? before->id : 0};
  fEvents->StateChanged();
}

void TListEditor::Remove(const BMessage& message) {
  const TSong* const before = fSongs->CurrentSong();
  const int64 playing = before ? before->id : 0;
  if (!fSongs->Remove(ids_in(message))) return;
  const TSong* const now = fSongs->CurrentSong();
  const TPlayback playback = fTransport->Playback();
  if (now == nullptr) {
    CancelPlay();
    fTransport->Stop();
  } else if (!playback.isLoaded || now->id == playing) {
    fEvents->StateChanged();
  } else {
    fTransport->PlaySong(fSongs->Current(), !playback.isPlaying);
  }
}

void TListEditor::Move(const BMessage& message) {
  if (!fSongs->Move(ids_in(message), place_in(message))) return;
  fOrder.reset();
  fEvents->StateChanged();
}

void TListEditor::Sort(const BMessage& message) {
  int32 by = 0;
  if (message.FindInt32("by", &by) != B_OK || by > static_cast<int32>(TSortKey::kTrack)) return;
  if (by == kSortAsBefore) return SortAsBefore();
  if (by < 0) return;
  const TSongOrder order{static_cast<TSortKey>(by), message.GetBool("descending")};
  if (!fOrder) {
    fUnsortedIds.clear();
    for (const TSong& song : *fSongs->Songs()) fUnsortedIds.push_back(song.id);
  }
  fSongs->Arrange(sorted_ids(*fSongs->Songs(), order));
  fOrder = order;
  fEvents->StateChanged();
}

void TListEditor::SortAsBefore() {
  if (!fOrder) return;
  std::unordered_set<int64> left; // songs may have been removed meanwhile
  for (const TSong& song : *fSongs->Songs()) left.insert(song.id);
  std::erase_if(fUnsortedIds, [&left](int64 id) { return !left.contains(id); });
  fSongs->Arrange(fUnsortedIds);
  fOrder.reset();
  fEvents->StateChanged();
}

void TListEditor::Clear() {
  fSearch.Forget();
  fSearches.clear();
  CancelPlay();
  fSongs->Clear();
  fOrder.reset();
  fEvents->ErrorsResolved();
  fTransport->Stop();
}

/** Tags that the sound has reported meanwhile take precedence. */
void TListEditor::TakeTags(const BMessage& message) {
  std::unordered_map<int64, int32> numbers;
  for (const int64 id : ids_in(message)) numbers.emplace(id, static_cast<int32>(numbers.size()));
  for (int32 i = 0; i < fSongs->Count(); ++i) {
    const auto found = numbers.find(fSongs->At(i)->id);
    if (found == numbers.end() || fSongs->At(i)->played) continue;
    take_tags(tags_in(message, found->second), fSongs->Edit(i));
    fOrder.reset();
  }
  fEvents->StateChanged();
}

void TListEditor::Export(const BMessage& message) {
  std::string path;
  if (message.FindString("path", &path) != B_OK) return;
  const std::string folder = std::filesystem::path(path).parent_path().string();
  if (atomic_replace(path, m3u_text(*fSongs->Songs(), folder)) != B_OK)
    fEvents->ErrorOccurred(player_text("Player_Err_Save_List", {path}));
}
