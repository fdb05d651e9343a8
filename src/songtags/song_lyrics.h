#pragma once

#include <optional>
#include <string>
#include <string_view>
#include <vector>

/** Lyrics inside a song, and their serialized form for the pipe from the program vesmo-songtags. Pure: any thread. */

/** How a song file stores tags. */
enum class TSongFormat : unsigned char { kNone, kId3, kVorbisComment, kMp4 };

/** The tags that hold lyrics. */
enum class TLyricsPlace : unsigned char { kUslt, kSylt, kLyrics, kUnsyncedLyrics, kMp4Lyrics };

struct TEmbeddedLyrics {
  TLyricsPlace place = TLyricsPlace::kUslt;
  std::string text; // UTF-8 lines, as `normalized_text` gives them; times as [mm:ss.cc]
  friend bool operator==(const TEmbeddedLyrics&, const TEmbeddedLyrics&) = default;
};

/** Each place at most once. */
struct TLyricsInSong {
  std::string state; // identifies this version of the file
  TSongFormat format = TSongFormat::kNone;
  std::vector<TEmbeddedLyrics> found;
};

/** Longer lyrics are neither read nor written. */
inline constexpr size_t kMostLyricsBytes = size_t{2} << 20;
inline constexpr size_t kMostAnswerBytes = 5 * kMostLyricsBytes + 1024;

/** "USLT", "LYRICS" … */
const char* place_name(TLyricsPlace place);

/** The lyrics to show: those with time tags, complete texts before the timed lines of SYLT. Null if there are none. */
const TEmbeddedLyrics* best_lyrics(const TLyricsInSong& song);

/** The lyrics that a song of this format has after `text` was written into it. */
std::vector<TEmbeddedLyrics> lyrics_to_write(TSongFormat format, const std::string& text);

std::string song_lyrics_bytes(const TLyricsInSong& song);
/** Empty unless the bytes are exactly of that form and within its limits. */
std::optional<TLyricsInSong> parse_song_lyrics(std::string_view bytes);
