#pragma once

#include "common/file_replacement.h"
#include "common/stale_files.h"

#include <functional>
#include <list>
#include <map>
#include <string>
#include <vector>

/** An input file. */
struct TInput {
  std::string path;     // "-" is the standard input
  std::string relative; // relative to the folder in which it was found
  std::string Name() const { return path == "-" ? "(standard input)" : path; }
};

/** The files of the given paths, each once, even if it has several names. Folders are searched for files whose path
    `isWanted`. Unreadable folders are passed to `report`, a line each. */
std::vector<TInput> collect_files(const std::vector<std::string>& paths,
                                  const std::function<bool(const std::string&)>& isWanted,
                                  const std::function<void(const std::string&)>& report);

/** The whole file and its state at that time; "-" reads the standard input. Refuses files that are not regular or
    larger than 1 GiB. */
[[nodiscard]] status_t read_input(const std::string& path, std::string* bytes, struct stat* info);

/** True for *.lrc. */
bool has_lyrics_name(const std::string& path);

/** Error message for a status code. */
std::string error_text(status_t status);

/** Replacements that share one flush, which is the slow part of writing. Not thread-safe. The destructor rolls back
    what was not committed. */
class TReplacementBatch {
public:
  /** Writes the new file next to the old one, which must be unchanged since it was read. A file with several hard links
      is replaced at once. */
  [[nodiscard]] status_t Add(size_t id, const std::string& path, const struct stat& asRead, std::string_view bytes);
  /** For a file that was not read before; creates missing folders. */
  [[nodiscard]] status_t AddCopy(size_t id, const std::string& path, std::string_view bytes, bool overwrites);
  /** The replacements to be committed. */
  std::vector<size_t> Waiting() const;
  /** Flushes, renames every new file over the old one, and returns the results. */
  void Commit(const std::function<void(size_t id, status_t)>& told);

private:
  struct TPending {
    size_t id;
    TFileReplacement replacement;
  };
  status_t Begin(size_t id, TFileTarget target, std::string_view bytes);
  status_t FlushDisks();

  std::vector<TPending> fPending;
  std::map<dev_t, std::string> fFolders;     // one descriptor per file system written to
  std::map<std::string, TStaleFiles> fStale; // by folder
};
