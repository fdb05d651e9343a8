#include "platform/storage/find_directory.h"

#include <pwd.h>
#include <unistd.h>

#include <cstdlib>

namespace {

std::string home_folder() {
  if (const char* home = std::getenv("HOME"); home && *home == '/') return home;
  const passwd* const user = getpwuid(getuid());
  return user && user->pw_dir ? user->pw_dir : "";
}

} // namespace

status_t find_directory(directory_which which, BPath* path) {
  if (which == B_USER_SETTINGS_DIRECTORY) {
    if (const char* settings = std::getenv("XDG_CONFIG_HOME"); settings && *settings == '/') {
      return path->SetTo(settings);
    }
  }
  const std::string home = home_folder();
  if (home.empty()) return B_ENTRY_NOT_FOUND;
  return path->SetTo(home.c_str(), which == B_USER_SETTINGS_DIRECTORY ? ".config" : nullptr);
}
