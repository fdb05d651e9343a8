#pragma once

#include "player/model/info_record.h"

#include <QVariantMap>

#include <string>

/** The state of another player on the bus, as it reports it. */
struct TOtherSong {
  int32 state = TInfoRecord::kStopped;
  std::string title; // the file name if the player reports none
  std::string artist;
  std::string path;     // empty if it is no local file
  std::string trackId;  // may be no valid object path
  int64 durationUs = 0; // 0: unknown
  double rate = 1;
  double volume = 1;
  bool canSeek = false;
  bool canPause = false;
  bool canPlay = false;

  bool operator==(const TOtherSong&) const = default;
  bool IsSameTrack(const TOtherSong& other) const {
    // Titles arrive late and change on radio streams: only used if there is no file to compare.
    return trackId == other.trackId && path == other.path && (!path.empty() || title == other.title);
  }
};

/** Stores the properties that are present and have the expected type. */
void take_properties(TOtherSong* song, const QVariantMap& properties);
