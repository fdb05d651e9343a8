#pragma once

#include "player/model/player_choices.h"
#include "player/model/playlist.h"
#include "player/model/song_sorting.h"

#include <memory>
#include <optional>
#include <string>
#include <vector>

/** Another player that can be the source of the song. */
struct TSourceName {
  std::string id;
  std::string name;
};

/** How a plug-in presents itself to the user. */
struct TPluginTexts {
  std::string name;
  std::string info;
  bool operator==(const TPluginTexts&) const = default;
};

/** What the current source plays, and how. */
struct TPlayback {
  bool isLoaded = false;
  bool isPlaying = false;
  int32 durationMs = 0;
  int32 speedPercent = 100;
  int32 volumePercent = 100;
  /** The A-B repeat; -1 for an end that is not set. */
  int32 repeatFromMs = -1;
  int32 repeatToMs = -1;
};

/** Everything that the player's window shows, handed over as a whole after each change. */
struct TPlayerState : TPlayback {
  std::shared_ptr<const TSongs> songs = std::make_shared<TSongs>();
  int32 current = -1;
  std::optional<TSongOrder> order; // the songs are sorted like that
  bool isSearching = false;        // more songs may be found
  /** The tagged moments of this song's lyrics, ascending; null when no lyrics are open for it. */
  std::shared_ptr<const std::vector<int32>> marksMs;
  std::vector<TSourceName> sources; // other players
  bool isBusReachable = false;
  std::string source; // id of the other player that is the source; empty for this player's own sound
  /** The other player's song, shown instead of the list's; null for this player's own sound. */
  std::shared_ptr<const TSong> otherSong;
  std::vector<TPluginTexts> plugins;
  TPlayerChoices choices;
  std::vector<TSoundDevice> devices; // as found when last asked for
  TWatchedFolders absentFolders;     // of the watched ones, those that cannot be read now
  std::string errors;                // a line each
};

/** The song that the window shows as playing; null for none. */
inline const TSong* shown_song(const TPlayerState& state) {
  if (state.otherSong) return state.otherSong.get();
  const bool hasSong = state.current >= 0 && state.current < static_cast<int32>(state.songs->size());
  return hasSong ? &(*state.songs)[static_cast<size_t>(state.current)] : nullptr;
}
