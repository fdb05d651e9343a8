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

/** The editor's link to the player: play position, title and playlist. A worker thread makes the first contact and may
    poll; the thread that owns the link refreshes it; a search may ask for the title and the playlist meanwhile. */
class Sonivo_FrontEnd : public SNThread {
public:
  /** `pollInformation`: the worker asks for the record every `intervalUs`. */
  Sonivo_FrontEnd(bool pollInformation, int64 intervalUs);
  /** Waits for the worker and the mailbox to end. */
  ~Sonivo_FrontEnd() override;

  /** Starts the worker. Once. */
  void Start();
  void Main() override;

  /** Never holds up the thread that owns the link: while the player's queue is full, one request waits for room on the
      worker's thread, for all that are made meanwhile. */
  void SendInfoRequest();
  /** Takes over the answer that has arrived, if one has, and asks for the next: what one refresh asked for, the next
     one takes. */
  void Refresh();
  /** Of the last record taken over. */
  int32 PositionMs() const;
  std::string Title() const;
  /** Where the song is that plays; nothing while none does. A player that does not tell shows it by what its position
      does from one call to the next. On the thread that owns the link. */
  std::optional<int32> SungPositionMs();

  /** Scripting: each waits for the player without a limit, but gives up as soon as `StopWaiting` was called.
      -1 without an answer. */
  int32 CountEntries();
  /** Fills the record only when the answer is whole; frees the texts that it held. */
  bool GetEntry(SonivoSongEntry* entry, int32 index);
  void PlayThis(int32 index, bool fade);

  /** Wishes: they never wait and are not answered; a player that does not know them leaves them alone.
      -1 when there is no player, or none with room for them. Any thread. */
  status_t SeekTo(int32 positionMs) const;
  status_t SeekBy(int32 differenceMs) const;
  status_t PlayPause() const;
  /** By so many points of the song's own speed. */
  status_t ChangeSpeed(int32 percent) const;
  /** The lines of the song of that title are sung at these times, in ascending order. */
  status_t ShowMarks(const std::string& title, const std::vector<int32>& timesMs) const;

  /** Lets every waiting question give up, now and from now on. Any thread. */
  void StopWaiting();

  /** Grows with every answer to a question of the scripting. Any thread. */
  int32 CountAnswers() const { return fAnswers; }

  bool IsReady() const;
  SNFE_Receiver* Receiver() const { return fReceiver; }

private:
  bool Ask(const BMessage& question, BMessage* answer);
  THostInformation Information() const;

  SNFE_Receiver* fReceiver;
  sem_id fDataLock;
  const int64 fIntervalUs;
  const sem_id fWake; // deleted when the worker is to end
  int32 fPriority = 0;
  THostInformation fInformation; // guarded by the data lock
  int32 fLastPositionMs = 0;     // as SungPositionMs saw it
  const bool fPollInformation;
  std::atomic<bool> fStopWaiting{false};
  std::atomic<bool> fRequestWaits{false}; // for the worker to send
  std::atomic<int32> fAnswers{0};
};

/** The playlist entry whose title is the playing one's. Kept as it always was: true also when an answer failed before
    the list's end, with the last entry read (or an empty one), so look at the file name. Texts belong to the caller.
    False, too, for a list without an end: the walk stops after a million entries. */
bool get_current_song_entry(Sonivo_FrontEnd* frontEnd, SonivoSongEntry* entry);
/** Frees the two texts. */
void free_song_entry(SonivoSongEntry* entry);
