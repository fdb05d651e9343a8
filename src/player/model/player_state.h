#pragma once

#include "player/model/playlist.h"

#include <memory>
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

/** All that the player's window shows, handed over whole after a change. */
struct TPlayerState {
  std::shared_ptr<const TSongs> songs = std::make_shared<TSongs>();
  int32 current = -1;
  bool isSearching = false; // more songs may come
  bool isLoaded = false;
  bool isPlaying = false;
  int32 durationMs = 0;
  int32 speedPercent = 100;
  int32 volumePercent = 100;
  /** The part that is played again and again; -1 where it has no such end. */
  int32 repeatFromMs = -1;
  int32 repeatToMs = -1;
  /** The tagged moments of this song's lyrics, ascending; null when no lyrics are open for it. */
  std::shared_ptr<const std::vector<int32>> marksMs;
  /** The other players there are; and the one that is the source, empty for this player's own sound. */
  std::vector<TSourceName> sources;
  bool isBusReachable = false;
  std::string source;
  /** That one's song, which is shown in place of the list's. */
  std::shared_ptr<const TSong> otherSong;
  std::vector<TPluginTexts> plugins;
  /** What went wrong, a line each; empty when nothing did. */
  std::string faults;
};

/** The song that the window tells of; null for none. */
inline const TSong* shown_song(const TPlayerState& state) {
  if (state.otherSong) return state.otherSong.get();
  const bool hasSong = state.current >= 0 && state.current < static_cast<int32>(state.songs->size());
  return hasSong ? &(*state.songs)[static_cast<size_t>(state.current)] : nullptr;
}
