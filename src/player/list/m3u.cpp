#include "player/list/m3u.h"

#include "platform/support/cut_text.h"
#include "player/model/song_address.h"
#include "player/model/song_tags.h"

#include <QByteArray>
#include <QString>
#include <QStringDecoder>

#include <algorithm>
#include <cmath>
#include <filesystem>

namespace fs = std::filesystem;

namespace {

constexpr std::string_view kInfo = "#EXTINF:";
constexpr std::string_view kArtist = "#EXTART:";
constexpr std::string_view kAlbum = "#EXTALB:";
constexpr std::string_view kTrack = "#SONIVO-TRACK:"; // no directive in common use
constexpr std::string_view kBetween = " - ";
constexpr std::string_view kFile = "file://";

std::string as_utf8(std::string_view bytes) {
  const QByteArrayView view(bytes.data(), static_cast<qsizetype>(bytes.size()));
  QStringDecoder decoder(QStringDecoder::Utf8); // strips a byte order mark
  const QString text = decoder(view);
  return (decoder.hasError() ? QString::fromLatin1(view) : text).toStdString();
}

std::string_view trimmed(std::string_view line) {
  const auto isBlank = [](char c) { return c == ' ' || c == '\t' || c == '\r'; };
  while (!line.empty() && isBlank(line.front())) line.remove_prefix(1);
  while (!line.empty() && isBlank(line.back())) line.remove_suffix(1);
  return line;
}

/** Metadata from the directives before a song. */
struct TDirectives {
  std::string title;
  std::string artist;
  std::string album;
  int32 track = 0;
  int32 durationMs = 0;
};

void read_info(std::string_view info, TDirectives* directives) {
  const size_t comma = std::min(info.find(','), info.size());
  const double seconds = std::strtod(std::string(info.substr(0, comma)).c_str(), nullptr);
  if (seconds > 0 && seconds < 2e6) directives->durationMs = static_cast<int32>(std::lround(seconds * 1000));
  if (comma < info.size()) directives->title = cut_text(trimmed(info.substr(comma + 1)));
}

bool read_directive(std::string_view line, TDirectives* directives) {
  const auto text_after = [line](std::string_view name) {
    return std::string(cut_text(trimmed(line.substr(name.size()))));
  };
  if (line.starts_with(kInfo)) {
    read_info(line.substr(kInfo.size()), directives);
  } else if (line.starts_with(kArtist)) {
    directives->artist = text_after(kArtist);
  } else if (line.starts_with(kAlbum)) {
    directives->album = text_after(kAlbum);
  } else if (line.starts_with(kTrack)) {
    directives->track = track_number(text_after(kTrack));
  } else {
    return false;
  }
  return true;
}

/** A single invalid byte would make the parser read the whole list as Latin 1. */
std::string on_one_line(std::string text) {
  if (!QUtf8StringView(text.data(), text.size()).isValidUtf8()) text = QString::fromStdString(text).toStdString();
  std::ranges::replace_if(
      text, [](char c) { return c == '\n' || c == '\r'; }, ' ');
  return text;
}

/** Lists from other systems separate folders by backslashes. */
std::string with_slashes(std::string_view line) {
  std::string name(line);
  if (name.find('/') == std::string::npos) std::ranges::replace(name, '\\', '/');
  return name;
}

TSong song_of(std::string_view line, const std::string& folder, const TDirectives& directives) {
  TSong song;
  TSongAddress address = song_address(with_slashes(line), folder);
  song.path = std::move(address.text);
  song.error = std::move(address.refusal);
  song.artist = directives.artist;
  song.album = directives.album;
  song.track = directives.track;
  song.durationMs = directives.durationMs;
  const std::string artistFirst = directives.artist + std::string(kBetween);
  const bool namesArtist = !directives.artist.empty() && directives.title.starts_with(artistFirst);
  song.title = namesArtist ? directives.title.substr(artistFirst.size()) : directives.title;
  if (song.title.empty()) song.title = cut_text(fs::path(song.path).stem().string());
  return song;
}

bool is_plain(const std::string& name) {
  return std::none_of(name.begin(), name.end(), [](unsigned char c) { return c < ' ' || c == '\\'; }) &&
         trimmed(name) == name && !name.starts_with('#') && QString::fromStdString(name).toStdString() == name;
}

/** A path that would not survive a round trip is written as a percent-encoded URL. */
std::string line_of(const std::string& path, const fs::path& folder) {
  if (!is_file_path(path)) return on_one_line(path);
  const std::string relative = fs::path(path).lexically_relative(folder).string();
  const bool isInside = !relative.empty() && relative != "." && !relative.starts_with("..");
  const std::string& name = isInside ? relative : path;
  const bool comesBack = is_plain(name) && song_address(name, folder.string()).text == path;
  return comesBack ? name : std::string(kFile) + QByteArray(path.c_str()).toPercentEncoding("/").toStdString();
}

} // namespace

TSongs parse_m3u(std::string_view bytes, const std::string& folder) {
  const std::string text = as_utf8(bytes);
  TSongs songs;
  TDirectives directives;
  std::string_view rest = text;
  for (size_t lines = 0; !rest.empty() && lines < kMostListLines; ++lines) {
    const size_t end = std::min(rest.find('\n'), rest.size());
    const std::string_view line = trimmed(rest.substr(0, end));
    rest.remove_prefix(std::min(end + 1, rest.size()));
    if (read_directive(line, &directives) || line.empty() || line.front() == '#') continue;
    songs.push_back(song_of(line, folder, std::exchange(directives, {})));
  }
  return songs;
}

std::string m3u_text(const TSongs& songs, const std::string& folder) {
  std::string text = "#EXTM3U\n";
  for (const TSong& song : songs) {
    const std::string artist = on_one_line(song.artist);
    if (!artist.empty()) text.append(kArtist).append(artist).append("\n");
    if (!song.album.empty()) text.append(kAlbum).append(on_one_line(song.album)).append("\n");
    if (song.track > 0) text.append(kTrack).append(std::to_string(song.track)).append("\n");
    text.append(kInfo).append(std::to_string(song.durationMs > 0 ? song.durationMs / 1000 : -1)).append(",");
    if (!artist.empty()) text.append(artist).append(kBetween);
    text.append(on_one_line(song.title)).append("\n").append(line_of(song.path, folder)).append("\n");
  }
  return text;
}
