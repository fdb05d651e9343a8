#include "tools/vesmo_lrc/songs.h"

#include "common/koreva.h"
#include "lyrics/exact_lyrics.h"
#include "lyrics/line_limit.h"
#include "songtags/song_text.h"
#include "songtags/songtags_program.h"
#include "tools/vesmo_lrc/count_of.h"
#include "tools/vesmo_lrc/report.h"
#include "tools/vesmo_lrc/rewrite.h"

#include <unistd.h>

#include <algorithm>

namespace {

std::string status_text(TSongStatus status) {
  switch (status) {
  case TSongStatus::kNotSupported:
    return "not a song in a format that can hold lyrics (MP3, FLAC, Ogg, Opus, MP4)";
  case TSongStatus::kNotFound:
    return error_text(B_ENTRY_NOT_FOUND);
  case TSongStatus::kNoPermission:
    return error_text(B_PERMISSION_DENIED);
  case TSongStatus::kIsLink:
    return "a link, or a file with several hard links; name the file itself, with one name";
  case TSongStatus::kChanged:
    return error_text(B_MISMATCHED_VALUES);
  case TSongStatus::kTooLarge:
    return "the lyrics or the song are too large";
  case TSongStatus::kDamaged:
    return "the song's tags are damaged, or cannot be changed safely; it was left unchanged";
  case TSongStatus::kOtherTags:
    return "other tags of the song would change; it was left unchanged";
  case TSongStatus::kDiskFull:
    return error_text(B_DEVICE_FULL);
  default:
    return "the song could not be read or written";
  }
}

bool is_named(const TOptions& options, const TInput& input) {
  return std::find(options.paths.begin(), options.paths.end(), input.path) != options.paths.end();
}

TOutcome without_lyrics(const TOptions& options, const TInput& input, const char* error) {
  if (is_named(options, input)) return failed(error);
  TOutcome outcome;
  outcome.state = TOutcome::kAsItWas;
  return outcome;
}

/** The lyrics file for a song; empty if there is none. */
std::string lyrics_for(const TOptions& options, const std::string& song) {
  if (!options.lyrics.empty()) return options.lyrics;
  for (const char* const extension : {"lrc", "txt"}) {
    if (const std::string path = koreva::reext(song, extension); access(path.c_str(), F_OK) == 0) return path;
  }
  return {};
}

/** Empty, with the reason, if the file cannot be read as lyrics. */
std::string text_of_file(const TOptions& options, const std::string& path, std::string* error) {
  std::string bytes;
  struct stat info {};
  if (const status_t status = read_input(path, &bytes, &info); status != B_OK) {
    *error = error_text(status);
    return {};
  }
  if (has_too_many_lines(bytes)) *error = "more than " + std::to_string(kMostLines) + " lines";
  if (!error->empty()) return {};
  const TExactLyrics lyrics(std::move(bytes), options.readEncoding);
  *error = unreadable_text(lyrics);
  const std::string text = error->empty() ? text_for_song(lyrics.Lines()) : std::string();
  if (error->empty() && text.empty()) *error = "no text";
  if (text.size() > kMostLyricsBytes) *error = "too long for a song";
  return error->empty() ? text : std::string();
}

std::string lines_text(const std::string& text) {
  const auto lines = static_cast<size_t>(std::count(text.begin(), text.end(), '\n')) + (text.empty() ? 0 : 1);
  return count_of(lines, "line", "lines") + ", " + count_of(synced_lines(text).size(), "time", "times");
}

/** What embedding changes. */
std::string preview(const TInput& input, const std::string& lyricsPath, const std::string& text,
                    const std::vector<TEmbeddedLyrics>& made, const TLyricsInSong& old) {
  std::string places;
  for (const TEmbeddedLyrics& lyrics : made)
    places += (places.empty() ? "" : ", ") + std::string(place_name(lyrics.place));
  std::string replaced;
  for (const TEmbeddedLyrics& lyrics : old.found)
    replaced += (replaced.empty() ? "; replaces " : "; ") + std::string(place_name(lyrics.place)) + " (" +
                lines_text(lyrics.text) + ")";
  return printable(input.Name()) + ": " + printable(lyricsPath) + " (" + lines_text(text) + ") as " + places +
         replaced + "\n";
}

} // namespace

TOutcome extract_lyrics(const TOptions& options, const TInput& input, const std::string& path, size_t id,
                        TReplacementBatch* batch) {
  const TSongReading reading = read_song_lyrics(input.path);
  if (reading.status != TSongStatus::kDone) return failed(status_text(reading.status));
  const TEmbeddedLyrics* const lyrics = best_lyrics(reading.lyrics);
  if (lyrics == nullptr) return without_lyrics(options, input, "no lyrics inside this song");
  TOutcome outcome;
  outcome.state = TOutcome::kChanged;
  if (options.isDryRun) {
    outcome.printed = printable(input.Name() + (path.empty() ? "" : " -> " + path)) + ": " + place_name(lyrics->place) +
                      " (" + lines_text(lyrics->text) + ")\n";
  } else if (path.empty()) {
    outcome.printed = lyrics->text + "\n";
  } else {
    const status_t status = batch->AddCopy(id, path, lyrics->text + "\n", options.overwrites);
    if (status != B_OK) return failed(path + ": " + error_text(status));
  }
  return outcome;
}

TOutcome embed_lyrics(const TOptions& options, const TInput& input) {
  const std::string path = lyrics_for(options, input.path);
  if (path.empty()) return without_lyrics(options, input, "no lyrics file (.lrc or .txt) next to this song");
  std::string error;
  const std::string text = text_of_file(options, path, &error);
  if (text.empty()) return failed(path + ": " + error);
  const TSongReading reading = read_song_lyrics(input.path);
  if (reading.status != TSongStatus::kDone) return failed(status_text(reading.status));
  const auto made = lyrics_to_write(reading.lyrics.format, text);
  TOutcome outcome;
  outcome.state = reading.lyrics.found == made ? TOutcome::kAsItWas : TOutcome::kChanged;
  if (outcome.state == TOutcome::kAsItWas) return outcome;
  if (options.isDryRun) {
    outcome.printed = preview(input, path, text, made, reading.lyrics);
    return outcome;
  }
  const TSongStatus status = write_song_lyrics(input.path, reading.lyrics.state, text);
  return status == TSongStatus::kDone ? outcome : failed(status_text(status));
}
