#pragma once

#include "platform/app/messenger.h"
#include "songtags/songtags_program.h"

#include <atomic>
#include <functional>
#include <string>
#include <thread>

/** Reads the lyrics inside a song, or writes lyrics into it, on a thread, one song at a time. Used on its
   owner's looper; the thread works on fields that are not used until it is joined. */
class TSongLyricsJob {
public:
  /** Sends kMsgSongLyricsRead and kMsgSongLyricsWritten to `owner`. */
  explicit TSongLyricsJob(const BMessenger& owner) : fOwner(owner) {}
  TSongLyricsJob(const TSongLyricsJob&) = delete;
  TSongLyricsJob& operator=(const TSongLyricsJob&) = delete;

  /** Whether the thread has work. */
  bool IsRunning() const { return fIsRunning; }

  void Read(const std::string& song);
  /** Starts writing into the song that was read, if it is still the same. */
  void Write(const std::string& text);
  /** To be called when a message of the thread arrives. False if the work is not done: the message came from elsewhere.
      True again for the same message as the follow-up of another command. */
  bool Finish();

  const std::string& Song() const { return fSong; }
  const TSongReading& Reading() const { return fReading; }
  TSongStatus Written() const { return fWritten; }

private:
  void Start(uint32 doneCode, std::function<void(const std::stop_token&)> work);

  const BMessenger fOwner;
  bool fIsRunning = false;
  std::string fSong;
  TSongReading fReading;
  TSongStatus fWritten = TSongStatus::kFailed;
  std::atomic<bool> fIsDone{false};
  std::jthread fThread; // the last member: stopped and joined first
};
