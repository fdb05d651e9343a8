#pragma once

#include "platform/kernel/thread_checker.h"
#include "player/app/other_transport.h"

#include <optional>
#include <string>
#include <vector>

class TNowPlaying;
class TOwnTransport;

/** Decides which player the song comes from: this one, with its own sound, or another one on the message bus.
    Application's thread. */
class TSourceSwitch {
public:
  /** `wanted` is chosen as soon as it appears on the bus; empty for none. The pointers outlive this. */
  TSourceSwitch(TOwnTransport* own, TBus* bus, TNowPlaying* nowPlaying, TPlayerEvents* events, std::string wanted);

  TTransport& Transport();
  /** Null while this player's own sound is the source. */
  const TSong* OtherSong() const { return fOther ? &fOther->Song() : nullptr; }
  bool IsOther() const { return fOther.has_value(); }
  void UseOwn();
  /** What the bus reports of other players, and the user's choice; false for any other message. */
  bool Handle(const BMessage& message);
  /** Fills in the sources there are, the chosen one, and what it plays. */
  void AddTo(TPlayerState* state) const;

private:
  void Choose(const std::string& id);
  const TSourceName* Find(const std::string& id) const;
  void TakePlayers(const BMessage& message);
  void CheckChosenIsThere();

  ThreadChecker fThread;
  TOwnTransport* const fOwn;
  TBus* const fBus;
  TNowPlaying* const fNowPlaying;
  TPlayerEvents* const fEvents;
  std::string fWanted; // on the command line, and not there yet
  std::vector<TSourceName> fPlayers;
  bool fIsBusReachable = false;
  std::optional<TOtherTransport> fOther;
};
