#include "player/app/folder_watcher.h"

#include "platform/app/message.h"
#include "platform/app/messenger.h"
#include "player/app/kept_list.h"
#include "player/app/list_editor.h"
#include "player/app/player_events.h"
#include "player/list/requests.h"
#include "player/model/player_messages.h"

#include <algorithm>
#include <filesystem>
#include <utility>

TFolderWatcher::TFolderWatcher(const BMessenger& player, TListEditor* list, TPlayerEvents* events)
    : fList(list), fEvents(events), fWatch([player] { ask(player, kMsgWatchNews); }) {}

void TFolderWatcher::Start(const TWatchedFolders& folders) {
  fHasStarted = true;
  Watch(folders);
}

/** Lazy: most users watch no folder. */
void TFolderWatcher::LoadKnown() {
  if (std::exchange(fHasLoaded, true)) return;
  fKnown.Load(std::filesystem::path(kept_list_path()).replace_filename("Watched.m3u8").string());
}

void TFolderWatcher::Watch(const TWatchedFolders& folders) {
  if (!fHasStarted || folders == fFolders) return;
  LoadKnown();
  const TWatchedFolders before = std::exchange(fFolders, folders);
  for (const std::string& folder : before) {
    if (std::ranges::find(folders, folder) == folders.end()) fKnown.ForgetFolder(folder);
  }
  fWatch.Watch(folders);
}

bool TFolderWatcher::Handle(const BMessage& message) {
  if (message.what != kMsgWatchNews) return false;
  TakeNews();
  return true;
}

/** The news may concern a folder that is no longer watched. */
bool TFolderWatcher::IsWatched(const std::string& path) const {
  return std::ranges::any_of(fFolders, [&](const std::string& folder) { return is_below(path, folder); });
}

void TFolderWatcher::TakeNews() {
  TFolderWatch::TNews news = fWatch.Take();
  std::erase_if(news.come, [this](const TSong& song) { return !IsWatched(song.path); });
  for (const std::string& folder : news.firstScanned) fKnown.KeepOnly(folder, news.come);
  fKnown.Forget(news.gone);
  fList->MarkMissing(news.gone);
  fList->MarkFound(news.come);
  fList->AppendNew(fKnown.NewOf(std::move(news.come)));
  for (const std::string& error : news.errors) fEvents->ErrorOccurred(error);
  fAbsent = std::move(news.absent);
  fEvents->StateChanged();
}
