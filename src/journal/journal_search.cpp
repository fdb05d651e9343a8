#include "journal/journal_search.h"

#include "journal/journal_process.h"
#include "lyrics/lyrics_file.h"

#include <sys/stat.h>
#include <unistd.h>

#include <algorithm>
#include <map>
#include <utility>

namespace {

constexpr int64 kDayS = 24 * 60 * 60;
constexpr int64 kKeptS = 30 * kDayS;

bool has_bytes(const TFileState& state, const std::string& bytes) {
  return state.size == static_cast<int64>(bytes.size()) && state.digest == digest_of(bytes);
}

/** True if nothing is lost without the journal. */
bool is_saved(const TRecoveredDocument& document, const TFileLook& onDisk) {
  if (document.isDamaged || !document.isComplete) return false;
  if (document.history.IsSaved()) return true;
  return onDisk.state && !document.target.unread.Any() &&
         has_bytes(*onDisk.state, encoded_lines(document.history.Lines(), document.target.form, document.source));
}

TFileLook on_disk(const TJournalTarget& target) {
  if (target.path.empty()) return {};
  return look_at_file(target.path, kMaxLyricsFileSize);
}

bool is_changed(const TJournalTarget& target, const TFileLook& onDisk) {
  if (onDisk.kind == TFileKind::kMissing || onDisk.kind == TFileKind::kFolderMissing) return false;
  return !onDisk.state || !target.state || !target.state->HasBytesOf(*onDisk.state);
}

/** False for a journal that was cut off before the first change was written. */
bool has_change(std::string_view bytes) {
  TJournalReader reader(bytes);
  return reader.Header() ? reader.Next() || reader.IsDamaged() : !is_cut_header(bytes);
}

struct TCandidate {
  TFoundJournal found;
  uint64 document = 0;
  uint64 generation = 0;
  bool isComplete = false;
};

/** Nothing for a journal that is not offered. */
std::optional<TCandidate> candidate(const TJournalFolder& folder, const std::string& name, TJournalFiles* unreadable) {
  std::shared_ptr<TFolderJournalFile> file = folder.Lock(name);
  if (!file) return {};
  const std::optional<std::string> bytes = read_journal(*file);
  if (bytes && !has_change(*bytes)) {
    file->Remove();
    return {};
  }
  const std::optional<TRecoveredDocument> document = bytes ? recover_document(*bytes) : std::nullopt;
  if (!document) {
    if (unreadable) unreadable->push_back(std::move(file));
    return {};
  }
  const TFileLook onDisk = on_disk(document->target);
  if (is_saved(*document, onDisk)) {
    file->Remove();
    return {};
  }
  if (document->history.IsSaved()) return {}; // damaged before its first change
  return TCandidate{{std::move(file), document->target, document->lastChangeS, is_changed(document->target, onDisk)},
                    document->header.document,
                    document->header.generation,
                    document->isComplete};
}

/** Of the journals of one document, left by a crash between two files, all but the newest complete one go. */
std::vector<TCandidate> without_superseded(std::vector<TCandidate> candidates) {
  std::map<uint64, uint64> newest;
  for (const TCandidate& one : candidates) {
    uint64& generation = newest[one.document];
    if (one.isComplete) generation = std::max(generation, one.generation);
  }
  std::erase_if(candidates, [&newest](const TCandidate& one) {
    const bool isSuperseded = one.generation < newest[one.document];
    if (isSuperseded) one.found.file->Remove();
    return isSuperseded;
  });
  return candidates;
}

/** True if the journal has just been removed. */
bool expire(TFoundJournal* found, int64 nowS) {
  const std::optional<int64> announcedS = found->file->MarkedAtS(TJournalMark::kExpiryAnnounced);
  if (announcedS && nowS - *announcedS >= kDayS) {
    found->file->Remove();
    return true;
  }
  const std::optional<int64> offeredS = found->file->MarkedAtS(TJournalMark::kOffered);
  found->expires = offeredS && nowS - *offeredS >= kKeptS;
  return false;
}

} // namespace

std::vector<TFoundJournal> find_journals(const TJournalFolder& folder, int64 nowS, TJournalFiles* unreadable) {
  std::vector<TCandidate> candidates;
  for (const std::string& name : folder.Names())
    if (auto one = candidate(folder, name, unreadable)) candidates.push_back(std::move(*one));
  std::vector<TFoundJournal> journals;
  for (TCandidate& one : without_superseded(std::move(candidates)))
    if (!expire(&one.found, nowS)) journals.push_back(std::move(one.found));
  std::stable_sort(journals.begin(), journals.end(),
                   [](const auto& left, const auto& right) { return left.lastChangeS > right.lastChangeS; });
  return journals;
}

bool has_file_changed(const TJournalTarget& target) {
  return is_changed(target, on_disk(target));
}

bool is_same_file(const std::string& one, const std::string& other) {
  struct stat first {};
  struct stat second {};
  if (one == other) return true;
  return stat(one.c_str(), &first) == 0 && stat(other.c_str(), &second) == 0 && first.st_dev == second.st_dev &&
         first.st_ino == second.st_ino;
}

std::vector<TJournalInUse> journals_in_use(const TJournalFolder& folder, TJournalKind kind) {
  std::vector<TJournalInUse> journals;
  for (const std::string& name : folder.Names(kind)) {
    const std::optional<TJournalHeader> header = folder.HeaderInUse(name);
    if (header && !header->target.path.empty()) journals.push_back({header->target.path, header->process.id});
  }
  return journals;
}

std::optional<TOtherEditor> other_editor_of(const TJournalFolder& folder, const std::string& path) {
  for (const auto kind : {TJournalKind::kJournal, TJournalKind::kOpenDocument}) {
    for (const TJournalInUse& one : journals_in_use(folder, kind))
      if (one.process != getpid() && is_same_file(one.path, path))
        return TOtherEditor{one.process, kind == TJournalKind::kJournal};
  }
  return {};
}

std::shared_ptr<TJournalFile> announce_open(TJournalFolder* folder, const std::string& path) {
  for (const std::string& name : folder->Names(TJournalKind::kOpenDocument))
    if (const auto left = folder->Lock(name)) left->Remove();
  std::shared_ptr<TJournalFile> file = folder->Create(TJournalKind::kOpenDocument);
  if (file && file->Append(encoded_header({.process = this_process(), .target = {path, {}, {}, {}}}))) return file;
  if (file) file->Remove();
  return {};
}
