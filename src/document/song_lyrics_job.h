#pragma once

#include "common/abandonable_thread.h"
#include "platform/app/messenger.h"
#include "songtags/songtags_program.h"

#include <functional>
#include <memory>
#include <string>

/** Reads the lyrics inside a song, or writes lyrics into it, on a thread, one song at a time. Used on its owner's
    looper. Destroying it kills the helper program, and waits a moment for that; if the program cannot end, because its
    disk does not answer, the thread is abandoned. */
class TSongLyricsJob {
public:
  using TReader = std::function<TSongReading(const std::string& song, const std::stop_token& stop)>;

  /** Sends kMsgSongLyricsRead and kMsgSongLyricsWritten to `owner`. `read` is called on the thread. */
  explicit TSongLyricsJob(const BMessenger& owner, TReader read = read_song_lyrics);
  TSongLyricsJob(const TSongLyricsJob&) = delete;
  TSongLyricsJob& operator=(const TSongLyricsJob&) = delete;
  ~TSongLyricsJob();

  /** From the start of the work until Finish. */
  bool IsRunning() const { return fIsRunning; }

  /** Starts reading; no effect while running. */
  void Read(const std::string& song);
  /** Starts writing into the song that was read, if it is still the same. */
  void Write(const std::string& text);
  /** To be called when a message of the thread arrives. False if the work is not done: the message came from elsewhere.
      True again for the same message as the follow-up of another command. */
  bool Finish();

  const std::string& Song() const { return fWork->song; }
  const TSongReading& Reading() const { return fWork->reading; }
  TSongStatus Written() const { return fWork->written; }

private:
  /** What the thread works on; not used by the owner before it is done. */
  struct TWork {
    std::string song;
    TSongReading reading;
    TSongStatus written = TSongStatus::kFailed;
    std::stop_source stop;
    std::atomic<bool> isDone{false};
  };

  void Start(uint32 doneCode, std::function<void(TWork&)> work);

  const BMessenger fOwner;
  const TReader fRead;
  bool fIsRunning = false;
  std::shared_ptr<TWork> fWork = std::make_shared<TWork>();
  TAbandonableThread fThread;
};
