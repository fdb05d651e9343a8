#include "player/app/list_saver.h"

#include "player/model/player_messages.h"

#include <utility>

namespace {
constexpr bigtime_t kSaveDelayUs = 2000000;
}

TKeptList TListSaver::Restore(TPlaylist* songs) {
  fThread.Check();
  fPath = kept_list_path();
  TKeptList kept = load_kept_list(fPath);
  const bool wasEmpty = songs->Count() == 0;
  songs->TakeUp(kept.songs);
  if (wasEmpty) songs->SetCurrent(kept.current);
  fNotedSongs = songs->Songs();
  fNotedCurrent = songs->Current();
  return kept;
}

void TListSaver::NoteChanges(const TPlaylist& songs) {
  fThread.Check();
  if (fPath.empty() || (fNotedSongs == songs.Songs() && fNotedCurrent == songs.Current())) return;
  fNotedSongs = songs.Songs();
  fNotedCurrent = songs.Current();
  fSaveTimer.StartOnce(kMsgKeep, kSaveDelayUs);
}

bool TListSaver::Save(const TPlaylist& songs, int32 positionMs, int32 volumePercent) {
  fThread.Check();
  return fPath.empty() || save_kept_list({*songs.Songs(), songs.Current(), positionMs, volumePercent}, fPath);
}
