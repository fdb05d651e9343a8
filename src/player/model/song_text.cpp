#include "player/model/song_text.h"
#include "player/texts/player_texts.h"

#include "platform/support/cut_text.h"
#include "player/model/song_address.h"

#include <QString>

#include <sys/stat.h>
#include <unistd.h>

#include <cerrno>
#include <cstdio>
#include <cstring>

namespace {
/** Tolerance: durations are estimates for files that do not store one. */
constexpr int32 kEarlyMs = 3000;
} // namespace

std::string file_type_error(const std::string& path) {
  struct stat file {};
  if (stat(path.c_str(), &file) != 0) return std::strerror(errno);
  if (S_ISDIR(file.st_mode)) return player_text("Player_Err_Is_Folder");
  return S_ISREG(file.st_mode) ? "" : player_text("Player_Err_Is_Device");
}

std::string file_error(const std::string& path, const std::string& librarySays) {
  if (!is_file_path(path)) return librarySays;
  if (std::string error = file_type_error(path); !error.empty()) return error;
  struct stat file {};
  if (stat(path.c_str(), &file) == 0 && file.st_size == 0) return player_text("Player_Err_Is_Empty");
  if (access(path.c_str(), R_OK) != 0) return std::strerror(errno);
  return librarySays;
}

std::string early_end(const TSong& song, int32 positionMs) {
  if (song.durationMs - positionMs < kEarlyMs) return {};
  return player_text("Player_Err_Ends_Early", {song.path, clock_text(positionMs), clock_text(song.durationMs)});
}

std::string clean_text(std::string_view text) {
  std::string clean;
  for (const char c : cut_text(text)) {
    const auto byte = static_cast<unsigned char>(c);
    if (byte >= 0x20 && byte != 0x7f) {
      clean += c;
    } else if (!clean.empty() && clean.back() != ' ') {
      clean += ' ';
    }
  }
  if (clean.ends_with(' ')) clean.pop_back();
  return QString::fromStdString(clean).toStdString();
}

void take_tags(const TSongTags& tags, TSong* song) {
  const std::string title = clean_text(tags.title);
  if (!title.empty()) song->title = title;
  song->artist = clean_text(tags.artist);
  song->album = clean_text(tags.album);
  song->track = tags.track > 0 && tags.track <= kHighestTrack ? tags.track : 0;
  song->durationMs = tags.durationMs;
}

std::string clock_text(int32 positionMs) {
  const int32 seconds = positionMs / 1000;
  char text[32];
  if (seconds < 3600) {
    std::snprintf(text, sizeof text, "%d:%02d", seconds / 60, seconds % 60);
  } else {
    std::snprintf(text, sizeof text, "%d:%02d:%02d", seconds / 3600, seconds / 60 % 60, seconds % 60);
  }
  return text;
}
