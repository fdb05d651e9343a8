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

using TJournalFiles = std::vector<std::shared_ptr<TFolderJournalFile>>;

/** All journals of ended processes, the newest first. Removes those without unsaved changes: whose lines are in their
   file, and those that were announced to expire a day ago or more. Those that cannot be read, as they are damaged or of
   another version, are left alone, and added to `unreadable`, if any. Blocks on the disk; any thread. */
std::vector<TFoundJournal> find_journals(const TJournalFolder& folder, int64 nowS, TJournalFiles* unreadable = nullptr);

/** True if the file on the disk is another one than the journal's document was read from or saved in. */
bool has_file_changed(const TJournalTarget& target);

/** True if both paths lead to one file, by whichever names. */
bool is_same_file(const std::string& one, const std::string& other);

/** A journal that a living process writes for a file, or what shows that it has the file open. */
struct TJournalInUse {
  std::string path; // of the document's file
  int32 process = 0;
};
/** Documents without a file are left out. */
std::vector<TJournalInUse> journals_in_use(const TJournalFolder& folder, TJournalKind kind = TJournalKind::kJournal);

/** Another process that has a file open. */
struct TOtherEditor {
  int32 process = 0;
  bool hasUnsavedChanges = false;
};
/** The one that has the file at `path` open, at best one with unsaved changes. */
std::optional<TOtherEditor> other_editor_of(const TJournalFolder& folder, const std::string& path);

/** Shows other processes that this one has the file open, until the object is deleted or the process ends. Removes what
    ended processes have left. Null on failure. */
std::shared_ptr<TJournalFile> announce_open(TJournalFolder* folder, const std::string& path);
