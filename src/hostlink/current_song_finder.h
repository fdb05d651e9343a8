#pragma once

#include "platform/app/messenger.h"

#include <atomic>
#include <thread>

class BMessage;
class Sonivo_FrontEnd;

/** Finds the lyrics file of the current song on a thread of its own, so that the window stays responsive while the
    playlist is queried entry by entry. Sends kMsgSongFound or kMsgNoSong, and kMsgPlayerSilent if the player does not
    answer for two seconds; then the search goes on. */
class TCurrentSongFinder {
public:
  TCurrentSongFinder(Sonivo_FrontEnd* frontEnd, const BMessenger& asker);
  TCurrentSongFinder(const TCurrentSongFinder&) = delete;
  TCurrentSongFinder& operator=(const TCurrentSongFinder&) = delete;
  /** Cancels the search; `Sonivo_FrontEnd::StopWaiting` must have been called. */
  ~TCurrentSongFinder();

  /** False while a search is running. */
  bool Start();

private:
  BMessage Searched() const;
  void Find();
  void Watch();

  Sonivo_FrontEnd* const fFrontEnd;
  const BMessenger fAsker;
  std::atomic<bool> fSearching{false};
  std::atomic<bool> fEnding{false};
  std::thread fSearch;
  std::thread fWatch;
};
