#include "journal/journal_folder.h"

#include "common/file_replacement.h"
#include "journal/journal_process.h"
#include "platform/storage/find_directory.h"
#include "platform/storage/path.h"
#include "platform/support/log.h"

#include <dirent.h>
#include <fcntl.h>
#include <sys/file.h>
#include <sys/stat.h>
#include <unistd.h>

#include <algorithm>
#include <atomic>
#include <cerrno>

namespace {

constexpr const char* kFolder = "KOREVA/VesmoE/Journal";
constexpr mode_t kFolderMode = 0700;
constexpr mode_t kFileMode = 0600;
constexpr int kMostNames = 1000;
constexpr size_t kMostFiles = 10000;
constexpr size_t kHeaderBytes = 128 << 10;
constexpr size_t kBootIdPart = 8;

std::atomic<int> gNextNumber{1};

std::string folder_path() {
  BPath path;
  if (find_directory(B_USER_STATE_DIRECTORY, &path) != B_OK || path.Append(kFolder) != B_OK) return {};
  return path.Path();
}

void create_folders(const std::string& path) {
  for (size_t end = path.find('/', 1); end != std::string::npos; end = path.find('/', end + 1))
    mkdir(path.substr(0, end).c_str(), kFolderMode); // most exist already
  mkdir(path.c_str(), kFolderMode);
}

bool is_own_file(int file) {
  struct stat info {};
  return fstat(file, &info) == 0 && S_ISREG(info.st_mode) && info.st_uid == geteuid() && info.st_nlink == 1;
}

/** True if the name still leads to the open file: it may have been removed between opening and locking. */
bool is_named(int folder, const std::string& name, int file) {
  struct stat opened {};
  struct stat named {};
  return fstat(file, &opened) == 0 && fstatat(folder, name.c_str(), &named, AT_SYMLINK_NOFOLLOW) == 0 &&
         opened.st_dev == named.st_dev && opened.st_ino == named.st_ino;
}

std::string mark_name(const std::string& name, TJournalMark mark) {
  return name + (mark == TJournalMark::kOffered ? ".offered" : ".expires");
}

std::string_view end_of(TJournalKind kind) {
  return kind == TJournalKind::kJournal ? ".journal" : ".open";
}

std::string next_name(const TJournalProcess& process, TJournalKind kind) {
  return std::to_string(process.id) + "-" + process.bootId.substr(0, kBootIdPart) + "-" +
         std::to_string(gNextNumber++) + std::string(end_of(kind));
}

bool is_name_of(std::string_view name, TJournalKind kind) {
  return name.size() > end_of(kind).size() && name.ends_with(end_of(kind)) && name.front() != '.' &&
         name.find('/') == std::string_view::npos;
}

std::optional<TJournalHeader> header_of(int file) {
  std::string bytes(kHeaderBytes, '\0');
  const ssize_t count = pread(file, bytes.data(), bytes.size(), 0);
  if (count < 0) return {};
  size_t size = 0;
  return decoded_header(std::string_view(bytes).substr(0, static_cast<size_t>(count)), &size);
}

/** Where the file system has no locks. */
bool is_of_running_process(int file) {
  const std::optional<TJournalHeader> header = header_of(file);
  return header && is_running(header->process);
}

} // namespace

TFolderJournalFile::TFolderJournalFile(std::shared_ptr<UniqueFd> folder, std::string name, UniqueFd file)
    : fFolder(std::move(folder)), fName(std::move(name)), fFile(std::move(file)) {}

bool TFolderJournalFile::Append(std::string_view bytes) {
  return write_all(fFile.Get(), bytes) == B_OK;
}

bool TFolderJournalFile::Flush() {
  if (fdatasync(fFile.Get()) != 0) return false;
  if (!fIsNameFlushed) fIsNameFlushed = fsync(fFolder->Get()) == 0;
  return fIsNameFlushed;
}

ssize_t TFolderJournalFile::Read(off_t from, char* bytes, size_t size) const {
  ssize_t count = 0;
  do {
    count = pread(fFile.Get(), bytes, size, from);
  } while (count < 0 && errno == EINTR);
  return count;
}

void TFolderJournalFile::Remove() {
  if (is_named(fFolder->Get(), fName, fFile.Get())) unlinkat(fFolder->Get(), fName.c_str(), 0);
  for (const auto mark : {TJournalMark::kOffered, TJournalMark::kExpiryAnnounced})
    unlinkat(fFolder->Get(), mark_name(fName, mark).c_str(), 0);
}

std::string TFolderJournalFile::Path() const {
  return folder_path() + "/" + fName;
}

std::optional<int64> TFolderJournalFile::MarkedAtS(TJournalMark mark) const {
  struct stat info {};
  if (fstatat(fFolder->Get(), mark_name(fName, mark).c_str(), &info, AT_SYMLINK_NOFOLLOW) != 0) return {};
  return info.st_mtim.tv_sec;
}

void TFolderJournalFile::SetMark(TJournalMark mark) {
  const UniqueFd created(openat(fFolder->Get(), mark_name(fName, mark).c_str(),
                                O_WRONLY | O_CREAT | O_EXCL | O_NOFOLLOW | O_CLOEXEC, kFileMode));
}

std::shared_ptr<UniqueFd> TJournalFolder::OpenExisting() const {
  auto folder =
      std::make_shared<UniqueFd>(open(folder_path().c_str(), O_RDONLY | O_DIRECTORY | O_NOFOLLOW | O_CLOEXEC));
  struct stat info {};
  if (!*folder || fstat(folder->Get(), &info) != 0) return {};
  // Access by others is taken back; what they may have put there is checked file by file.
  const bool isPrivate = (info.st_mode & 0077) == 0 || fchmod(folder->Get(), kFolderMode) == 0;
  if (info.st_uid == geteuid() && isPrivate) return folder;
  log_error(folder_path(), "belongs to another user or is open to others; no changes are recorded for recovery");
  return {};
}

std::shared_ptr<TJournalFile> TJournalFolder::Create(TJournalKind kind) {
  std::shared_ptr<UniqueFd> folder = OpenExisting();
  if (!folder) {
    create_folders(folder_path());
    folder = OpenExisting();
  }
  if (!folder) return {};
  const TJournalProcess process = this_process();
  for (int i = 0; i < kMostNames; ++i) {
    const std::string name = next_name(process, kind);
    UniqueFd file(
        openat(folder->Get(), name.c_str(), O_RDWR | O_APPEND | O_CREAT | O_EXCL | O_NOFOLLOW | O_CLOEXEC, kFileMode));
    if (!file && errno != EEXIST) return {};
    if (!file) continue;
    // Without locks (some network file systems) the journal is still worth having.
    const bool isLocked = flock(file.Get(), LOCK_EX | LOCK_NB) == 0 || errno != EWOULDBLOCK;
    // Another process may have looked at the empty file first, and removed it.
    if (isLocked && is_named(folder->Get(), name, file.Get()))
      return std::make_shared<TFolderJournalFile>(folder, name, std::move(file));
  }
  return {};
}

std::vector<std::string> TJournalFolder::Names(TJournalKind kind) const {
  std::vector<std::string> names;
  const std::shared_ptr<UniqueFd> folder = OpenExisting();
  const int copy = folder ? openat(folder->Get(), ".", O_RDONLY | O_DIRECTORY | O_CLOEXEC) : -1;
  DIR* const entries = copy >= 0 ? fdopendir(copy) : nullptr;
  if (entries == nullptr) return names;
  while (const dirent* const entry = readdir(entries)) {
    if (is_name_of(entry->d_name, kind) && names.size() < kMostFiles) names.emplace_back(entry->d_name);
  }
  closedir(entries); // closes `copy`, too
  std::sort(names.begin(), names.end());
  return names;
}

std::shared_ptr<TFolderJournalFile> TJournalFolder::Lock(const std::string& name) const {
  const std::shared_ptr<UniqueFd> folder = OpenExisting();
  if (!folder) return {};
  UniqueFd file(openat(folder->Get(), name.c_str(), O_RDWR | O_APPEND | O_NOFOLLOW | O_NONBLOCK | O_CLOEXEC));
  if (!file || !is_own_file(file.Get())) return {};
  const bool isLocked = flock(file.Get(), LOCK_EX | LOCK_NB) == 0;
  if (!isLocked && (errno == EWOULDBLOCK || is_of_running_process(file.Get()))) return {};
  if (!is_named(folder->Get(), name, file.Get())) return {};
  return std::make_shared<TFolderJournalFile>(folder, name, std::move(file));
}

std::optional<TJournalHeader> TJournalFolder::HeaderInUse(const std::string& name) const {
  const std::shared_ptr<UniqueFd> folder = OpenExisting();
  if (!folder) return {};
  UniqueFd file(openat(folder->Get(), name.c_str(), O_RDONLY | O_NOFOLLOW | O_NONBLOCK | O_CLOEXEC));
  if (!file || !is_own_file(file.Get())) return {};
  if (flock(file.Get(), LOCK_SH | LOCK_NB) == 0 || errno != EWOULDBLOCK) return {};
  return header_of(file.Get());
}

std::optional<std::string> read_journal(const TJournalFile& file) {
  constexpr size_t kFirst = 64 << 10;
  std::string bytes;
  size_t length = 0;
  while (length < kMaxJournalSize) {
    if (length == bytes.size()) bytes.resize(std::max(2 * length, kFirst));
    const ssize_t count = file.Read(static_cast<off_t>(length), bytes.data() + length, bytes.size() - length);
    if (count < 0) return {};
    if (count == 0) {
      bytes.resize(length);
      return bytes;
    }
    length += static_cast<size_t>(count);
  }
  return {};
}
