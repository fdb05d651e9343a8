#pragma once

#include "platform/kernel/thread_checker.h"
#include "player/app/message_timer.h"
#include "player/list/song_search.h"
#include "player/model/playlist.h"
#include "player/model/song_sorting.h"

#include <map>
#include <optional>
#include <string>
#include <vector>

class TOwnTransport;
class TPlayerEvents;

/** Carries out requests to change the playlist: adds the songs that a search finds, removes, moves, clears, exports.
    Application's thread. */
class TListEditor {
public:
  /** The pointers outlive this. `player` is sent kMsgSongsFound when there is something for Handle. */
  TListEditor(TPlaylist* songs, TOwnTransport* transport, const BMessenger& player, TPlayerEvents* events);

  /** Requests of the window and news of the search; false for any other message. */
  bool Handle(const BMessage& message);
  /** Looks for the songs of files, folders and lists that were named on a command line. Those in the list already stay
      in their places, the others are appended. Returns the search's number. */
  int64 Open(std::vector<std::string> paths, bool startPaused);
  /** Plays the first song that the search finds. False when the search has ended. */
  bool PlayWhenFound(int64 search);
  void CancelPlay() { fPlayedSearch = 0; }
  /** Appends songs that are not in the list yet. Never begins to play. */
  void AppendNew(TSongs songs);
  /** Marks the songs of the list whose files have disappeared. The current one may still be playing and is left. */
  void MarkMissing(const std::vector<std::string>& paths);
  /** Removes the mark, or any other error, of songs whose files have appeared. */
  void MarkFound(const TSongs& songs);
  bool IsSearching() const { return !fSearches.empty(); }
  /** As the user has sorted the list, and nothing has changed its order since. */
  const std::optional<TSongOrder>& Order() const { return fOrder; }

private:
  /** What is done with the songs that a search finds. */
  struct TPlan {
    bool isOpened = false; // by Open
    bool startPaused = false;
    int64 beforeId = 0; // of songs added by the window: the song they are inserted before; 0 for the end
    std::unordered_set<std::string> added = {};
  };
  void TakeFoundSongs();
  void TakePiece(TSongSearch::TPiece piece);
  void PlayFound(const std::string& firstPath, bool startPaused);
  void Add(const BMessage& message);
  void Remove(const BMessage& message);
  void Move(const BMessage& message);
  void Sort(const BMessage& message);
  void SortAsBefore();
  void Clear();
  void TakeTags(const BMessage& message);
  void Export(const BMessage& message);

  ThreadChecker fThread;
  TPlaylist* const fSongs;
  TOwnTransport* const fTransport;
  TPlayerEvents* const fEvents;
  TSongSearch fSearch;
  std::map<int64, TPlan> fSearches; // not ended yet, by number
  int64 fPlayedSearch = 0;          // its first song is played as soon as it is found; 0 for none
  std::optional<TSongOrder> fOrder;
  std::vector<int64> fUnsortedIds; // the order before fOrder
  bigtime_t fTookSongsUs = 0;
  TMessageTimer fTakeTimer;
};

/** The strings "path" of a message, as far as a bound. */
std::vector<std::string> paths_in(const BMessage& message);
