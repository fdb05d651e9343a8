#pragma once

#include "journal/journal_folder.h"
#include "journal/journal_reader.h"

#include <memory>
#include <optional>
#include <string>
#include <vector>

/** Unsaved changes left by a process that has ended. */
struct TFoundJournal {
  std::shared_ptr<TFolderJournalFile> file; // locked
  TJournalTarget target;
  int64 lastChangeS = 0; // since 1970
  /** The file on the disk is not the one that the changes belong to: they become a document of their own. */
  bool isFileChanged = false;
  /** Nobody has wanted them for a long time: they will be removed. */
  bool expires = false;
};

/** All journals of ended processes, the newest first. Removes those without unsaved changes: whose lines are in their
   file, and those that were announced to expire a day ago or more. Damaged journals and those of other versions are
   left alone. Blocks on the disk; any thread. */
std::vector<TFoundJournal> find_journals(const TJournalFolder& folder, int64 nowS);

/** True if the file on the disk is another one than the journal's document was read from or saved in. */
bool has_file_changed(const TJournalTarget& target);

/** True if both paths lead to one file, by whichever names. */
bool is_same_file(const std::string& one, const std::string& other);

/** A journal that a living process writes for a file. */
struct TJournalInUse {
  std::string path; // of the document's file
  int32 process = 0;
};
/** Documents without a file are left out. */
std::vector<TJournalInUse> journals_in_use(const TJournalFolder& folder);

/** The process that has unsaved changes in the file at `path`; nothing if there is none, or it is this one. */
std::optional<int32> process_editing(const TJournalFolder& folder, const std::string& path);
