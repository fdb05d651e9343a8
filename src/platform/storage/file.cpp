#include "platform/storage/file.h"

#include "platform/storage/directory.h"
#include "platform/storage/entry.h"
#include "platform/storage/status_of.h"

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include <cerrno>
#include <utility>

BFile::BFile(const char* path, uint32 openMode) {
  SetTo(path, openMode);
}
BFile::BFile(const entry_ref* ref, uint32 openMode) {
  SetTo(ref, openMode);
}
BFile::BFile(const BEntry* entry, uint32 openMode) {
  SetTo(entry, openMode);
}
BFile::~BFile() {
  Unset();
}

namespace {

int open_flags(uint32 mode) {
  static constexpr int kAccess[] = {O_RDONLY, O_WRONLY, O_RDWR, O_RDONLY};
  int flags = kAccess[mode & 3] | O_CLOEXEC | O_NOCTTY | O_NONBLOCK;
  if (mode & B_CREATE_FILE) flags |= O_CREAT;
  if (mode & B_ERASE_FILE) flags |= O_TRUNC;
  return flags;
}

/** Repeats a call that a signal interrupted. */
template <typename Call>
ssize_t uninterrupted(Call call) {
  ssize_t result = 0;
  do {
    result = call();
  } while (result < 0 && errno == EINTR);
  return result < 0 ? status_of_errno(errno) : result;
}

} // namespace

status_t BFile::SetTo(const char* path, uint32 openMode) {
  Unset();
  if (path == nullptr || *path == '\0') return fStatus = B_BAD_VALUE;
  fDescriptor = open(path, open_flags(openMode), 0666);
  return fStatus = fDescriptor < 0 ? status_of_errno(errno) : B_OK;
}

status_t BFile::SetTo(const entry_ref* ref, uint32 openMode) {
  return SetTo(ref ? ref->FullPath().c_str() : nullptr, openMode);
}

status_t BFile::SetTo(const BEntry* entry, uint32 openMode) {
  entry_ref ref;
  Unset();
  if (entry == nullptr || entry->GetRef(&ref) != B_OK) return fStatus = B_BAD_VALUE;
  return SetTo(&ref, openMode);
}

status_t BFile::SetTo(const BDirectory* directory, const char* name, uint32 openMode) {
  BEntry entry;
  Unset();
  if (entry.SetTo(directory, name) != B_OK) return fStatus = B_BAD_VALUE;
  return SetTo(&entry, openMode);
}

void BFile::Unset() {
  if (fDescriptor >= 0) close(std::exchange(fDescriptor, -1));
  fStatus = B_NO_INIT;
}

ssize_t BFile::Read(void* buffer, size_t size) {
  return uninterrupted([&] { return read(fDescriptor, buffer, size); });
}
ssize_t BFile::Write(const void* buffer, size_t size) {
  return uninterrupted([&] { return write(fDescriptor, buffer, size); });
}
off_t BFile::Seek(off_t position, uint32 mode) {
  const off_t result = lseek(fDescriptor, position, static_cast<int>(mode));
  return result < 0 ? static_cast<off_t>(status_of_errno(errno)) : result;
}
off_t BFile::Position() const {
  return lseek(fDescriptor, 0, SEEK_CUR);
}
status_t BFile::SetSize(off_t size) {
  return ftruncate(fDescriptor, size) == 0 ? B_OK : status_of_errno(errno);
}

status_t BFile::GetSize(off_t* size) const {
  struct stat info {};
  if (fstat(fDescriptor, &info) != 0) return status_of_errno(errno);
  *size = info.st_size;
  return B_OK;
}

status_t BFile::Sync() {
  return fsync(fDescriptor) == 0 ? B_OK : status_of_errno(errno);
}

bool BFile::IsDirectory() const {
  struct stat info {};
  return fDescriptor >= 0 && fstat(fDescriptor, &info) == 0 && S_ISDIR(info.st_mode);
}

bool BFile::IsRegular() const {
  struct stat info {};
  return fDescriptor >= 0 && fstat(fDescriptor, &info) == 0 && S_ISREG(info.st_mode);
}
