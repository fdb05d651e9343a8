#pragma once

#include "journal/journal_disk.h"
#include "journal/journal_format.h"
#include "platform/kernel/unique_fd.h"

#include <atomic>
#include <memory>
#include <optional>
#include <string>
#include <vector>

/** What is known of a journal on the disk, in files next to it whose modification time is the moment. */
enum class TJournalMark { kOffered, kExpiryAnnounced };

/** A file in the folder that shows that a document is open has the header of a journal, and no records. */
enum class TJournalKind { kJournal, kOpenDocument };

/** A journal in the folder. */
class TFolderJournalFile : public TJournalFile {
public:
  TFolderJournalFile(std::shared_ptr<UniqueFd> folder, std::string name, UniqueFd file);

  bool Append(std::string_view bytes) override;
  bool Flush() override;
  ssize_t Read(off_t from, char* bytes, size_t size) const override;
  void Remove() override;
  const std::string& Name() const { return fName; }
  std::string Path() const;
  /** When it was marked, s since 1970; nothing if it was not. */
  std::optional<int64> MarkedAtS(TJournalMark mark) const;
  /** Has no effect if it is marked already. */
  void SetMark(TJournalMark mark);

private:
  const std::shared_ptr<UniqueFd> fFolder;
  const std::string fName;
  const UniqueFd fFile;
  std::atomic<bool> fIsNameFlushed{false};
};

/** The folder of all journals of this user: below $XDG_STATE_HOME or ~/.local/state, accessible to this user only.
    Names, links and bytes in it are untrusted. Any thread, also several at a time. */
class TJournalFolder : public TJournalDisk {
public:
  /** Creates a missing folder only for `Create`. */
  std::shared_ptr<TJournalFile> Create() override { return Create(TJournalKind::kJournal); }
  std::shared_ptr<TJournalFile> Create(TJournalKind kind);

  /** Sorted. */
  std::vector<std::string> Names(TJournalKind kind = TJournalKind::kJournal) const;
  /** The journal, locked by this object from now on; null if it is in use, not readable, or not this user's. */
  std::shared_ptr<TFolderJournalFile> Lock(const std::string& name) const;
  /** The header of a journal that a living process has locked; nothing for all others. */
  std::optional<TJournalHeader> HeaderInUse(const std::string& name) const;

private:
  std::shared_ptr<UniqueFd> OpenExisting() const;
};

/** Its bytes; nothing if it cannot be read or is too large. */
std::optional<std::string> read_journal(const TJournalFile& file);
