#include "songtags/song_lyrics.h"

#include "songtags/song_text.h"

#include <algorithm>
#include <cstdint>
#include <iterator>

namespace {

constexpr std::string_view kMark = "VSLY\x01";
constexpr size_t kLongestState = 120;
constexpr const char* kNames[] = {"USLT", "SYLT", "LYRICS", "UNSYNCEDLYRICS", "\xC2\xA9lyr"};

void put(std::string* bytes, std::string_view text) {
  for (int shift = 0; shift < 32; shift += 8) bytes->push_back(static_cast<char>(text.size() >> shift & 0xff));
  *bytes += text;
}

/** Takes fields from the front of the bytes; stays failed after the first one that is missing or too large. */
class TFields {
public:
  explicit TFields(std::string_view bytes) : fRest(bytes) {}

  size_t Byte(size_t end) {
    const std::string_view byte = Take(1);
    const size_t number = byte.empty() ? end : static_cast<unsigned char>(byte.front());
    fFailed = fFailed || number >= end;
    return fFailed ? 0 : number;
  }
  std::string Text(size_t mostBytes) {
    uint32_t size = 0;
    const std::string_view digits = Take(4);
    for (size_t i = digits.size(); i-- > 0;) size = size << 8 | static_cast<unsigned char>(digits[i]);
    if (size > mostBytes) fFailed = true;
    return std::string(Take(fFailed ? 0 : size));
  }
  bool HasMore() const { return !fFailed && !fRest.empty(); }
  bool HasFailed() const { return fFailed; }

private:
  std::string_view Take(size_t size) {
    if (size > fRest.size()) fFailed = true;
    const std::string_view taken = fFailed ? std::string_view() : fRest.substr(0, size);
    fRest.remove_prefix(taken.size());
    return taken;
  }

  std::string_view fRest;
  bool fFailed = false;
};

} // namespace

const char* place_name(TLyricsPlace place) {
  return kNames[static_cast<size_t>(place)];
}

const TEmbeddedLyrics* best_lyrics(const TLyricsInSong& song) {
  const auto rank = [](const TEmbeddedLyrics& lyrics) {
    const bool isTimed = !synced_lines(lyrics.text).empty();
    return isTimed ? (lyrics.place == TLyricsPlace::kSylt ? 1 : 0) : 2;
  };
  const auto best = std::min_element(song.found.begin(), song.found.end(),
                                     [&](const auto& a, const auto& b) { return rank(a) < rank(b); });
  return best == song.found.end() ? nullptr : &*best;
}

std::vector<TEmbeddedLyrics> lyrics_to_write(TSongFormat format, const std::string& text) {
  const std::string whole = normalized_text(text);
  switch (format) {
  case TSongFormat::kId3: {
    std::vector<TEmbeddedLyrics> both{{TLyricsPlace::kUslt, whole}};
    if (const auto lines = synced_lines(whole); !lines.empty())
      both.push_back({TLyricsPlace::kSylt, synced_text(lines)});
    return both;
  }
  case TSongFormat::kVorbisComment:
    return {{TLyricsPlace::kLyrics, whole}, {TLyricsPlace::kUnsyncedLyrics, plain_text(whole)}};
  case TSongFormat::kMp4:
    return {{TLyricsPlace::kMp4Lyrics, whole}};
  default:
    return {};
  }
}

std::string song_lyrics_bytes(const TLyricsInSong& song) {
  std::string bytes(kMark);
  put(&bytes, song.state);
  bytes.push_back(static_cast<char>(song.format));
  for (const TEmbeddedLyrics& lyrics : song.found) {
    bytes.push_back(static_cast<char>(lyrics.place));
    put(&bytes, lyrics.text);
  }
  return bytes;
}

std::optional<TLyricsInSong> parse_song_lyrics(std::string_view bytes) {
  if (!bytes.starts_with(kMark) || bytes.size() > kMostAnswerBytes) return {};
  TFields fields(bytes.substr(kMark.size()));
  TLyricsInSong song;
  song.state = fields.Text(kLongestState);
  song.format = static_cast<TSongFormat>(fields.Byte(4));
  while (fields.HasMore()) {
    TEmbeddedLyrics lyrics;
    lyrics.place = static_cast<TLyricsPlace>(fields.Byte(std::size(kNames)));
    lyrics.text = fields.Text(kMostLyricsBytes);
    const bool isNew = std::ranges::none_of(song.found, [&](const auto& one) { return one.place == lyrics.place; });
    if (!isNew || lyrics.text != normalized_text(lyrics.text)) return {};
    song.found.push_back(std::move(lyrics));
  }
  return fields.HasFailed() ? std::nullopt : std::optional(std::move(song));
}
