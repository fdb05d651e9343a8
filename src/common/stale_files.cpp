#include "common/stale_files.h"

#include "common/file_replacement.h"

#include <dirent.h>
#include <fcntl.h>
#include <signal.h>
#include <sys/stat.h>

#include <cerrno>
#include <charconv>
#include <string_view>

namespace {

struct TTemporaryName {
  std::string target;
  pid_t process = 0; // 0: not the name of a temporary file
};

pid_t number_in(std::string_view text) {
  pid_t number = 0;
  const auto [end, error] = std::from_chars(text.data(), text.data() + text.size(), number);
  return error == std::errc() && end == text.data() + text.size() && number > 0 ? number : 0;
}

/** Parses "NAME.saving-PROCESS-COUNT", or "NAME.arc.PROCESS.new", which earlier versions used for settings. */
TTemporaryName temporary_name(const std::string& name) {
  constexpr std::string_view kMark = ".saving-";
  constexpr std::string_view kOldEnd = ".new";
  const std::string_view text = name;
  if (const size_t mark = text.rfind(kMark); mark != std::string_view::npos && mark > 0) {
    const std::string_view numbers = text.substr(mark + kMark.size());
    const size_t dash = numbers.find('-');
    const bool hasCount = dash != std::string_view::npos && number_in(numbers.substr(dash + 1)) > 0;
    return {name.substr(0, mark), hasCount ? number_in(numbers.substr(0, dash)) : 0};
  }
  if (!text.ends_with(kOldEnd)) return {};
  const std::string_view stem = text.substr(0, text.size() - kOldEnd.size());
  const size_t period = stem.rfind('.');
  if (period == std::string_view::npos || !stem.substr(0, period).ends_with(".arc")) return {};
  return {name.substr(0, period), number_in(stem.substr(period + 1))};
}

bool is_gone(pid_t process) {
  return kill(process, 0) != 0 && errno == ESRCH;
}

} // namespace

TStaleFiles::TStaleFiles(const std::string& folder)
    : fFolder(open(folder.c_str(), O_RDONLY | O_DIRECTORY | O_CLOEXEC)) {
  DIR* const entries = opendir(folder.c_str());
  if (entries == nullptr) return;
  while (const dirent* const entry = readdir(entries)) {
    const TTemporaryName name = temporary_name(entry->d_name);
    if (name.process > 0 && is_gone(name.process)) fStale.push_back({entry->d_name, name.target});
  }
  closedir(entries);
}

void TStaleFiles::RemoveThoseOf(const std::string& path) const {
  if (fStale.empty()) return;
  const std::string beside = name_beside(path, "");
  const std::string target = beside.substr(beside.rfind('/') + 1);
  for (const TStale& stale : fStale) {
    struct stat info {};
    const bool isOurs = stale.target == target &&
                        fstatat(fFolder.Get(), stale.name.c_str(), &info, AT_SYMLINK_NOFOLLOW) == 0 &&
                        S_ISREG(info.st_mode) && info.st_uid == geteuid() && info.st_nlink == 1;
    if (isOurs) unlinkat(fFolder.Get(), stale.name.c_str(), 0);
  }
}
