#include "player/model/file_kind.h"

#include <algorithm>
#include <cctype>
#include <string>

namespace {

constexpr std::string_view kLyrics[] = {"lrc", "txt"};
/** Pictures, documents, archives and programs that lie beside songs. */
constexpr std::string_view kOthers[] = {"jpg", "jpeg", "png", "gif",  "bmp", "webp", "svg", "tif", "tiff", "pdf", "odt",
                                        "doc", "docx", "htm", "html", "cue", "log",  "nfo", "sfv", "zip",  "rar", "7z",
                                        "gz",  "xz",   "tar", "iso",  "exe", "deb",  "srt", "ini", "db",   "json"};

std::string extension_of(std::string_view path) {
  const std::string_view name = path.substr(path.rfind('/') + 1);
  const size_t period = name.rfind('.');
  std::string extension(period == std::string_view::npos || period == 0 ? "" : name.substr(period + 1));
  std::ranges::transform(extension, extension.begin(), [](unsigned char c) { return std::tolower(c); });
  return extension;
}

} // namespace

TDroppedKind file_kind(std::string_view path) {
  const std::string extension = extension_of(path);
  if (std::ranges::find(kLyrics, extension) != std::end(kLyrics)) return TDroppedKind::kLyrics;
  return std::ranges::find(kOthers, extension) != std::end(kOthers) ? TDroppedKind::kOther : TDroppedKind::kSong;
}
