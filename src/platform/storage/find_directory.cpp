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

struct TFolderRule {
  const char* variable;
  const char* inHome;
};

TFolderRule rule_of(directory_which which) {
  switch (which) {
  case B_USER_SETTINGS_DIRECTORY:
    return {"XDG_CONFIG_HOME", ".config"};
  case B_USER_STATE_DIRECTORY:
    return {"XDG_STATE_HOME", ".local/state"};
  default:
    return {nullptr, nullptr};
  }
}

} // namespace

status_t find_directory(directory_which which, BPath* path) {
  const TFolderRule rule = rule_of(which);
  if (const char* folder = rule.variable ? std::getenv(rule.variable) : nullptr; folder && *folder == '/') {
    return path->SetTo(folder);
  }
  const std::string home = home_folder();
  if (home.empty()) return B_ENTRY_NOT_FOUND;
  return path->SetTo(home.c_str(), rule.inHome);
}
