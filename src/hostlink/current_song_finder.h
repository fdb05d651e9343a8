#pragma once

#include "platform/app/messenger.h"

#include <atomic>
#include <thread>

class BMessage;
class Sonivo_FrontEnd;

/** Finds the lyrics file of the song that is playing, on a thread of its own, so that the window stays alive while the
    player is asked entry by entry. Answers with kMsgSongFound, ref "refs"; with kMsgNoSong; or, when the player has not
    answered a question for two seconds, with kMsgPlayerSilent, and goes on waiting. */
class TCurrentSongFinder {
public:
  TCurrentSongFinder(Sonivo_FrontEnd* frontEnd, const BMessenger& asker);
  TCurrentSongFinder(const TCurrentSongFinder&) = delete;
  TCurrentSongFinder& operator=(const TCurrentSongFinder&) = delete;
  /** Gives up the search; the front end must have been told to stop waiting. */
  ~TCurrentSongFinder();

  /** False while a search is under way. */
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
