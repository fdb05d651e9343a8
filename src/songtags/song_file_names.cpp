#include "songtags/song_file_names.h"

#include <algorithm>
#include <cctype>
#include <iterator>
#include <string_view>

bool has_song_name(const std::string& path) {
  constexpr std::string_view kExtensions[] = {".mp3", ".mp2", ".flac", ".ogg", ".oga", ".opus", ".m4a", ".m4b", ".mp4"};
  const size_t period = path.rfind('.');
  if (period == std::string_view::npos) return false;
  std::string extension(path.substr(period));
  std::transform(extension.begin(), extension.end(), extension.begin(),
                 [](unsigned char c) { return static_cast<char>(std::tolower(c)); });
  return std::find(std::begin(kExtensions), std::end(kExtensions), extension) != std::end(kExtensions);
}
