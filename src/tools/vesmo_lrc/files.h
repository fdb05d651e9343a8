#pragma once

#include "common/file_replacement.h"
#include "common/stale_files.h"

#include <functional>
#include <list>
#include <map>
#include <string>
#include <vector>

/** A file to work on. */
struct TInput {
  std::string path;     // "-" for the standard input
  std::string relative; // below the folder it was found in
  std::string Name() const { return path == "-" ? "(standard input)" : path; }
};

/** The files that the paths on the line stand for, each once, also when it goes by several names. What cannot be looked
    into goes to `fault`, as a line of text. */
std::vector<TInput> collect_files(const std::vector<std::string>& paths,
                                  const std::function<void(const std::string&)>& fault);

/** The whole file and what it was like then; "-" reads the standard input. Refuses what is no ordinary file, and more
    than 1 GiB. */
[[nodiscard]] status_t read_input(const std::string& path, std::string* bytes, struct stat* info);

/** What a status code means to the user. */
std::string fault_text(status_t status);

/** Replacements that share one flush: a disk is slow at flushing, not at writing. One thread at a time; what was not
    committed when it goes is taken back. */
class TReplacementBatch {
public:
  /** Writes the new file beside the old one, which must still be as it was read. A file of several names
      is replaced at once. */
  [[nodiscard]] status_t Add(size_t id, const std::string& path, const struct stat& asRead, std::string_view bytes);
  /** The same for a file that is not read before; missing folders are made. */
  [[nodiscard]] status_t AddCopy(size_t id, const std::string& path, std::string_view bytes, bool overwrites);
  /** Which ones wait to be committed. */
  std::vector<size_t> Waiting() const;
  /** Flushes, puts every new file in its place, and tells the outcome of each. */
  void Commit(const std::function<void(size_t id, status_t)>& told);

private:
  struct TPending {
    size_t id;
    TFileReplacement replacement;
  };
  status_t Begin(size_t id, TFileTarget target, std::string_view bytes);
  status_t FlushDisks();

  std::vector<TPending> fPending;
  std::map<dev_t, std::string> fFolders;     // one on each disk that was written to
  std::map<std::string, TStaleFiles> fStale; // by folder
};
