#pragma once

#include "player/model/info_record.h"

#include <QVariantMap>

#include <string>

/** What another player on the bus tells of itself. */
struct TOtherSong {
  int32 state = TInfoRecord::kStopped;
  std::string title; // the file's name where the player is silent
  std::string artist;
  std::string path;     // empty for what is no file of this machine
  std::string trackId;  // by which the player knows the song; may be no valid object path
  int64 durationUs = 0; // 0: unknown
  double rate = 1;
  double volume = 1;
  bool canSeek = false;
  bool canPause = false;
  bool canPlay = false;

  bool operator==(const TOtherSong&) const = default;
  bool IsSameTrack(const TOtherSong& other) const {
    // Titles come late and change while a station plays; without a file they are all there is.
    return trackId == other.trackId && path == other.path && (!path.empty() || title == other.title);
  }
};

/** Takes over what the properties say; what they do not mention, or tell in another type, stays. */
void take_properties(TOtherSong* song, const QVariantMap& properties);
