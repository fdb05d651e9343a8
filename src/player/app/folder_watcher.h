#pragma once

#include "player/app/known_songs.h"
#include "player/list/folder_watch.h"

class BMessage;
class BMessenger;
class TListEditor;
class TPlayerEvents;

/** Adds the songs that appear in the user's watched folders to the list, and marks those that disappear. Application's
    thread. */
class TFolderWatcher {
public:
  /** The pointers outlive this. `player` is sent kMsgWatchNews when there is something for Handle. */
  TFolderWatcher(const BMessenger& player, TListEditor* list, TPlayerEvents* events);

  /** Begins to watch; until then Watch does nothing. */
  void Start(const TWatchedFolders& folders);
  /** The user has changed the folders. Those that are no longer watched are forgotten. */
  void Watch(const TWatchedFolders& folders);
  bool Handle(const BMessage& message);
  /** After the list was saved, which must not lack a song that is saved as known. False if the file cannot be
      written. */
  [[nodiscard]] bool Save() { return fKnown.Save(); }
  const TWatchedFolders& Absent() const { return fAbsent; }

private:
  void LoadKnown();
  void TakeNews();
  bool IsWatched(const std::string& path) const;

  TListEditor* const fList;
  TPlayerEvents* const fEvents;
  TFolderWatch fWatch;
  TKnownSongs fKnown;
  TWatchedFolders fFolders;
  TWatchedFolders fAbsent;
  bool fHasStarted = false;
  bool fHasLoaded = false;
};
