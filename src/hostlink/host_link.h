#pragma once

#include "hostlink/host_protocol.h"
#include "hostlink/sn_thread.h"
#include "lyrics/song_entry.h"

#include <atomic>
#include <optional>
#include <string>
#include <vector>

class BMessage;
class SNFE_Receiver;

/** The connection to the player: play position, title and playlist. A worker thread connects and may poll; the owner
    thread calls `Refresh`; a search thread may query title and playlist concurrently. */
class Sonivo_FrontEnd : public SNThread {
public:
  /** `pollInformation`: the worker requests the record every `intervalUs`. */
  Sonivo_FrontEnd(bool pollInformation, int64 intervalUs);
  /** Joins the worker and the mailbox. */
  ~Sonivo_FrontEnd() override;

  /** Starts the worker. Once. */
  void Start();
  void Main() override;

  /** Never blocks: if the player's queue is full, the worker sends one (coalesced) request when there is room, for the
      position of that moment. `whenUs`: the earlier moment, by `system_time`, whose position is requested. */
  void SendInfoRequest(std::optional<bigtime_t> whenUs = {});
  /** Applies the answer to the previous refresh, if it has arrived, and requests the next. On the owner thread. */
  void Refresh(std::optional<bigtime_t> whenUs = {});
  /** From the last applied record. */
  int32 PositionMs() const;
  /** Whether the player has computed that position for that earlier moment, as requested. */
  bool IsPositionOf(bigtime_t whenUs) const { return Information().whenUs == whenUs; }
  /** As the player reports it; 0 or less without a song. */
  int32 DurationMs() const;
  std::string Title() const;
  /** The position while a song is playing, otherwise nothing. If the player does not report its state, playing means
      that the position has changed since the previous call. On the owner thread. */
  std::optional<int32> SungPositionMs();

  /** True if the player reports that no song is playing; false if it does not report its state. */
  bool IsKnownToRest() const { return Information().isPlaying == false; }
  /** 100 if the player does not report it. */
  int32 SpeedPercent() const { return Information().speedPercent; }
  /** The player has a song and reports that it does not play. */
  bool IsPaused() const;

  /** Scripting. Block until the player answers or `StopWaiting` is called. -1 without an answer. */
  int32 CountEntries();
  /** Sets `entry`, freeing its previous texts, only if the answer is complete. */
  bool GetEntry(SonivoSongEntry* entry, int32 index);
  void PlayThis(int32 index, bool fade);

  /** Fire-and-forget commands: never block, get no reply; players that do not support them ignore them. -1 without a
      player or if its queue is full. Thread-safe. */
  status_t SeekTo(int32 positionMs) const;
  status_t SeekBy(int32 differenceMs) const;
  /** Plays on from there, also a song that is paused if the player reports that it is. */
  status_t PlayFrom(int32 positionMs) const;
  /** Plays that part of the song, after which it is paused at the part's beginning; without an end, the song plays on.
   */
  status_t PlayPart(int32 fromMs, std::optional<int32> toMs) const;
  /** Until EndPart, or until the user seeks or pauses. */
  status_t LoopPart(int32 fromMs, int32 toMs) const;
  /** The song is paused at the beginning of the part; no effect if none is played. */
  status_t EndPart() const;
  /** Clicks at these times of the song, in addition to those at the marks, until the song is sought. */
  status_t CountIn(const std::vector<int32>& timesMs) const;
  status_t PlayPause() const;
  /** By that many percentage points of the normal speed. */
  status_t ChangeSpeed(int32 percent) const;
  /** Adds the file to the playlist and plays it. */
  status_t PlayFile(const std::string& path) const { return PlayFiles({path}); }
  /** Adds files and folders to the playlist and plays the first song. */
  status_t PlayFiles(const std::vector<std::string>& paths) const;
  /** Marks on the seek bar for the song of that title, which may also be heard as clicks; times in ascending order. */
  status_t ShowMarks(const std::string& title, const std::vector<int32>& timesMs, bool asClicks = false) const;

  /** Cancels all current and future waits. Thread-safe. */
  void StopWaiting();

  /** Number of scripting answers so far. Thread-safe. */
  int32 CountAnswers() const { return fAnswers; }

  bool IsReady() const;
  SNFE_Receiver* Receiver() const { return fReceiver; }

private:
  bool Ask(const BMessage& question, BMessage* answer);
  THostInformation Information() const;
  int32 NumberAt(size_t offset) const;

  SNFE_Receiver* fReceiver;
  sem_id fDataLock;
  const int64 fIntervalUs;
  const sem_id fWake; // deleted to end the worker
  int32 fPriority = 0;
  THostInformation fInformation; // guarded by fDataLock
  int32 fLastPositionMs = 0;     // at the previous SungPositionMs
  const bool fPollInformation;
  std::atomic<bool> fStopWaiting{false};
  std::atomic<bool> fRequestWaits{false}; // to be sent by the worker
  std::atomic<int32> fAnswers{0};
};

/** The playlist entry with the title of the current song. Required oddity: also true if a query fails before the end of
    the list, with the last entry read (or an empty one), so check the file name. The caller owns the texts. Stops with
    false after a million entries. */
bool get_current_song_entry(Sonivo_FrontEnd* frontEnd, SonivoSongEntry* entry);
/** Frees the two texts. */
void free_song_entry(SonivoSongEntry* entry);
