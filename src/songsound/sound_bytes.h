#pragma once

#include "songsound/song_sound.h"

#include <optional>
#include <string>
#include <string_view>
#include <vector>

/** What the program sonivo-peaks has read of a song's sound. */
struct TReadSound {
  TSoundPart part; // empty if the song is too long for the levels of all of it
  bool isWhole = false;
  int32 durationMs = 0;       // of the whole song
  std::vector<TOnset> onsets; // of the whole song, ascending
  friend bool operator==(const TReadSound&, const TReadSound&) = default;
};

/** Levels of a longer part are not read. */
inline constexpr int32 kLongestPartMs = 90 * 60 * 1000;
inline constexpr size_t kMostSoundColumns = kLongestPartMs / kSoundColumnMs;
inline constexpr size_t kMostOnsets = 1'000'000;
inline constexpr size_t kMostSoundBytes = 28 + kMostSoundColumns * (kSoundBands + 1) + kMostOnsets * 5;

/** Serialized for the pipe. Numbers are 32-bit little-endian: "SNSD", version 1, start of the part in ms, its columns,
    1 if the song is whole, its duration in ms, its onsets; then the levels, the peaks, and of each onset the time and
   one byte for its strength. */
std::string sound_bytes(const TReadSound& sound);
/** Empty unless the bytes are exactly of that format and within its limits. */
std::optional<TReadSound> parse_sound(std::string_view bytes);

/** Compressed by zlib, for the cache. */
std::string packed_sound(const TReadSound& sound);
std::optional<TReadSound> unpack_sound(std::string_view packed);
