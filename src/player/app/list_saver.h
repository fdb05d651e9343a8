#pragma once

#include "platform/kernel/thread_checker.h"
#include "player/app/kept_list.h"
#include "player/app/message_timer.h"

/** Keeps the list on the disk from one run to the next. Saving is debounced: a list that is being put in order is
    written once. Application's thread. */
class TListSaver {
public:
  /** `player` is sent kMsgKeep when the list is to be saved. */
  explicit TListSaver(const BMessenger& player) : fSaveTimer(player) {}

  /** Reads the list of the last run into `songs`, before the songs already there; from now on changes are saved.
     Returns the list that was read. */
  TKeptList Restore(TPlaylist* songs);
  /** Has the list saved after a delay if it has changed. Nothing before Restore. */
  void NoteChanges(const TPlaylist& songs);
  /** False when the file cannot be written. */
  [[nodiscard]] bool Save(const TPlaylist& songs, int32 positionMs, int32 volumePercent);
  const std::string& Path() const { return fPath; }

private:
  ThreadChecker fThread;
  std::string fPath; // empty before Restore
  std::shared_ptr<const TSongs> fNotedSongs;
  int32 fNotedCurrent = -1;
  TMessageTimer fSaveTimer;
};
