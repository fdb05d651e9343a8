#include "fuzz/fuzz.h"
#include "platform/support/cut_text.h"
#include "player/list/m3u.h"
#include "player/model/song_address.h"

#include <algorithm>

/** Every entry is a file, an http(s) URL, or refused with a reason, and its texts are bounded. */
static void check_song(const TSong& song) {
  require(song.title.size() <= kLongestText && song.artist.size() <= kLongestText);
  if (!song.error.empty()) return require(song.path.size() <= kLongestText);
  const TSongAddress again = song_address(song.path, "/elsewhere");
  require(again.refusal.empty() && again.text == song.path);
  require(is_file_path(song.path) || song.path.starts_with("http://") || song.path.starts_with("https://"));
}

/** A saved playlist reads back song by song. */
extern "C" int LLVMFuzzerTestOneInput(const uint8_t* bytes, size_t size) {
  const TSongs songs = parse_m3u(text_of(bytes, size), "/music/lists");
  for (const TSong& song : songs) check_song(song);
  const auto samePath = [](const TSong& one, const TSong& other) { return one.path == other.path; };
  for (const char* folder : {"", "/music/lists", "/music"}) {
    const TSongs again = parse_m3u(m3u_text(songs, folder), folder[0] != '\0' ? folder : "/");
    require(std::ranges::equal(songs, again, samePath));
  }
  return 0;
}
