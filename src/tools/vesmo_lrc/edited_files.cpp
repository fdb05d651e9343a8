#include "tools/vesmo_lrc/edited_files.h"

#include "journal/journal_search.h"

TEditedFiles::TEditedFiles() {
  for (const TJournalInUse& journal : journals_in_use(TJournalFolder())) {
    struct stat info {};
    if (stat(journal.path.c_str(), &info) == 0) fProcesses[{info.st_dev, info.st_ino}] = journal.process;
  }
}

std::optional<int32> TEditedFiles::ProcessOf(const struct stat& file) const {
  const auto found = fProcesses.find({file.st_dev, file.st_ino});
  return found == fProcesses.end() ? std::nullopt : std::optional(found->second);
}
