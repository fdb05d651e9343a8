#include "platform/app/installed_programs.h"

#include "platform/app/desktop_entry.h"
#include "platform/storage/directory.h"
#include "platform/storage/file.h"
#include "platform/storage/find_directory.h"

#include <sys/stat.h>
#include <unistd.h>

#include <algorithm>
#include <cstdlib>
#include <optional>
#include <set>
#include <string_view>

namespace {

/** Several times the size of the longest entries with translations. */
constexpr off_t kMaxBytes = 256 * 1024;
/** Of all folders together. */
constexpr int kMaxFiles = 4096;

std::string variable(const char* name) {
  const char* const value = std::getenv(name);
  return value ? value : "";
}

/** A regular file of bounded size, owned by the user or root and not writable for others: its command is going to be
    run. */
bool is_trusted(const BFile& file) {
  struct stat info {};
  if (file.InitCheck() != B_OK || fstat(file.Descriptor(), &info) != 0) return false;
  const bool isOwn = info.st_uid == 0 || info.st_uid == geteuid();
  return S_ISREG(info.st_mode) && isOwn && (info.st_mode & S_IWOTH) == 0 && info.st_size <= kMaxBytes;
}

std::optional<std::string> text_of(const std::string& path) {
  BFile file(path.c_str(), B_READ_ONLY);
  if (!is_trusted(file)) return std::nullopt;
  std::string text(kMaxBytes, '\0');
  const ssize_t size = file.Read(text.data(), text.size());
  if (size < 0) return std::nullopt;
  text.resize(static_cast<size_t>(size));
  return text;
}

/** Searches the folders in their order. */
class Search {
public:
  explicit Search(const std::string& signature) : fSignature(signature) {}

  /** True when the entry is found. */
  bool LookIn(const std::string& folder) {
    BDirectory directory(folder.c_str());
    BEntry entry;
    while (directory.GetNextEntry(&entry) == B_OK) {
      const std::string name = entry.Name();
      if (!name.ends_with(".desktop") || fSeen.contains(name)) continue;
      if (++fCount > kMaxFiles || LookAt(name, folder + "/" + name)) break;
    }
    return !fCommand.empty();
  }

  std::vector<std::string> Command() const { return fCommand; }

private:
  bool LookAt(const std::string& name, const std::string& path) {
    const std::optional<std::string> text = text_of(path);
    if (!text) return false;
    fSeen.insert(name);
    const std::optional<DesktopEntry> found = parse_desktop_entry(*text);
    if (found && !found->isHidden && found->signature == fSignature) fCommand = found->arguments;
    return !fCommand.empty();
  }

  const std::string& fSignature;
  std::set<std::string> fSeen;
  int fCount = 0;
  std::vector<std::string> fCommand;
};

} // namespace

std::vector<std::string> application_folders() {
  std::string own = variable("XDG_DATA_HOME");
  BPath home;
  if (!own.starts_with('/') && find_directory(B_USER_DIRECTORY, &home) == B_OK) {
    own = std::string(home.Path()) + "/.local/share";
  }
  std::string common = variable("XDG_DATA_DIRS");
  if (common.empty()) common = "/usr/local/share:/usr/share";
  const std::string all = own + ":" + common;
  std::vector<std::string> folders;
  for (size_t start = 0; start <= all.size();) {
    const size_t end = std::min(all.find(':', start), all.size());
    if (all[start] == '/') folders.push_back(all.substr(start, end - start) + "/applications");
    start = end + 1;
  }
  return folders;
}

std::vector<std::string> command_of(const std::string& signature, const std::vector<std::string>& folders) {
  Search search(signature);
  if (signature.empty()) return {};
  for (const std::string& folder : folders) {
    if (search.LookIn(folder)) break;
  }
  return search.Command();
}
