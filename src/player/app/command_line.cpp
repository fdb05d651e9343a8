#include "player/app/command_line.h"

#include <string_view>

namespace {

constexpr const char* kUsage =
    "Usage: sonivo [--paused] [--new] [--source NAME] [--edit LYRICS] [SONG, FOLDER or PLAYLIST ...]\n"
    "If a player is already running, it plays the songs; --new starts another one.\n"
    "  --paused       load the first song without playing it\n"
    "  --new          start another player even if one is running\n"
    "  --source NAME  use the song of another running player, such as vlc or mpv\n"
    "  --edit LYRICS  open this lyrics file in the editor\n"
    "  --help         show this help\n"
    "  --version      show the version\n";

} // namespace

TCommandLine parse_command_line(int argc, const char* const* argv) {
  TCommandLine line;
  bool optionsEnded = false;
  for (int i = 1; i < argc; ++i) {
    const std::string_view word = argv[i];
    if (optionsEnded || word.empty() || word.front() != '-') {
      line.songs.emplace_back(word);
    } else if (word == "--") {
      optionsEnded = true;
    } else if (word == "--paused") {
      line.startsPaused = true;
    } else if (word == "--new") {
      line.isAnother = true;
    } else if (word == "--edit" && i + 1 < argc) {
      line.lyrics = argv[++i];
    } else if (word == "--source" && i + 1 < argc) {
      line.source = argv[++i];
    } else if (word == "--help" || word == "--version") {
      line.text = word == "--help" ? kUsage : "sonivo 3.26\n";
    } else {
      line.text = "sonivo: unknown option '" + std::string(word) + "'\n" + kUsage;
      line.error = true;
    }
  }
  return line;
}
