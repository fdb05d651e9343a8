#include "songtags/helper/song_in_sandbox.h"

#include "confined/confined_work.h"
#include "lyrics/digest.h"
#include "songtags/helper/descriptor_stream.h"
#include "songtags/helper/read_lyrics.h"
#include "songtags/helper/write_lyrics.h"

#include <sys/stat.h>

namespace {

constexpr TWorkLimits kReading{.cpuSeconds = 20, .wallSeconds = 60, .resultBytes = kMostAnswerBytes};
constexpr std::string_view kWritten = "written";
/** Lyrics in up to three encodings and places, and the copies that some formats need. */
constexpr rlim_t kMostGrowthBytes = 8 * kMostLyricsBytes;

/** A fixed width, so that the lyrics follow without a separator. */
std::string digest_text(const std::string& tags) {
  std::string digits = std::to_string(digest_of(tags));
  return std::string(20 - digits.size(), '0') + digits;
}

std::string seen_bytes(int file, bool withOtherTags) {
  TDescriptorStream stream(file);
  const TLyricsInSong lyrics = read_lyrics(&stream);
  const std::string digest = withOtherTags ? digest_text(read_other_tags(&stream)) : std::string();
  return stream.HasFailed() ? std::string() : digest + song_lyrics_bytes(lyrics);
}

} // namespace

std::optional<TSeenTags> read_in_sandbox(int file) {
  const size_t digestSize = digest_text({}).size();
  const auto bytes = confined_work({file}, kReading, [file] { return seen_bytes(file, true); });
  if (!bytes || bytes->size() < digestSize) return {};
  auto lyrics = parse_song_lyrics(std::string_view(*bytes).substr(digestSize));
  return lyrics ? std::optional(TSeenTags{*lyrics, bytes->substr(0, digestSize)}) : std::nullopt;
}

std::optional<TLyricsInSong> read_lyrics_in_sandbox(int file) {
  const auto bytes = confined_work({file}, kReading, [file] { return seen_bytes(file, false); });
  return bytes ? parse_song_lyrics(*bytes) : std::nullopt;
}

bool write_in_sandbox(int file, const std::string& text) {
  struct stat state {};
  if (fstat(file, &state) != 0) return false;
  const TWorkLimits limits{.cpuSeconds = 60,
                           .wallSeconds = 300,
                           .resultBytes = kWritten.size(),
                           .fileBytes = static_cast<rlim_t>(state.st_size) + kMostGrowthBytes};
  const auto result = confined_work({file}, limits, [file, &text] {
    TDescriptorStream stream(file);
    const bool isDone = write_lyrics(&stream, text) && !stream.HasFailed();
    return std::string(isDone ? kWritten : std::string_view());
  });
  return result == kWritten;
}
