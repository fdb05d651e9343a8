#include "tools/vesmo_lrc/files.h"
#include "tools/vesmo_lrc/stop.h"

#include <algorithm>
#include <cctype>
#include <filesystem>
#include <set>

namespace fs = std::filesystem;

namespace {

using TReport = std::function<void(const std::string&)>;

using TFilter = std::function<bool(const std::string&)>;

class TCollector {
public:
  TCollector(const TFilter& isWanted, const TReport& report) : fIsWanted(isWanted), fReport(report) {}

  void Add(const std::string& path) {
    std::error_code error;
    if (path != "-" && fs::is_directory(path, error)) {
      LookInto(path, "");
    } else {
      AddFile(path, fs::path(path).filename().string());
    }
  }
  std::vector<TInput> Take() { return std::move(fInputs); }

private:
  /** Sorted by name, so that runs are reproducible. Links to folders are not followed, since they may form cycles. */
  void LookInto(const std::string& folder, const std::string& relative) {
    std::error_code error;
    std::vector<fs::directory_entry> entries;
    for (fs::directory_iterator at(folder, error), end; !error && at != end; at.increment(error))
      entries.push_back(*at);
    if (error) fReport(folder + ": " + error.message());
    std::sort(entries.begin(), entries.end());
    for (const fs::directory_entry& entry : entries) {
      if (stop_signal() != 0) return;
      std::error_code none;
      const std::string below = relative + entry.path().filename().string();
      if (entry.is_directory(none) && !entry.is_symlink(none)) {
        LookInto(entry.path().string(), below + "/");
      } else if (fIsWanted(entry.path().string()) && entry.is_regular_file(none)) {
        AddFile(entry.path().string(), below);
      }
    }
  }

  void AddFile(const std::string& path, const std::string& relative) {
    struct stat info {};
    // A missing file is reported when it is read.
    const bool isKnown = path != "-" && stat(path.c_str(), &info) == 0;
    if (!isKnown || fSeen.emplace(info.st_dev, info.st_ino).second) fInputs.push_back({path, relative});
  }

  const TFilter& fIsWanted;
  const TReport& fReport;
  std::vector<TInput> fInputs;
  std::set<std::pair<dev_t, ino_t>> fSeen;
};

} // namespace

bool has_lyrics_name(const std::string& path) {
  std::string extension = fs::path(path).extension().string();
  std::transform(extension.begin(), extension.end(), extension.begin(),
                 [](unsigned char c) { return static_cast<char>(std::tolower(c)); });
  return extension == ".lrc";
}

std::vector<TInput> collect_files(const std::vector<std::string>& paths, const TFilter& isWanted,
                                  const TReport& report) {
  TCollector collector(isWanted, report);
  for (const std::string& path : paths) collector.Add(path);
  return collector.Take();
}
