#include "platform/storage/entry.h"

#include "platform/storage/directory.h"
#include "platform/storage/path.h"
#include "platform/storage/status_of.h"

#include <sys/stat.h>

#include <cerrno>
#include <cstdlib>
#include <filesystem>

BEntry::BEntry(const char* path, bool traverse) {
  SetTo(path, traverse);
}
BEntry::BEntry(const entry_ref* ref, bool traverse) {
  SetTo(ref, traverse);
}

status_t BEntry::SetTo(const char* path, bool traverse) {
  entry_ref ref;
  fStatus = get_ref_for_path(path, &ref);
  return fStatus == B_OK ? SetTo(&ref, traverse) : fStatus;
}

status_t BEntry::SetTo(const entry_ref* ref, bool traverse) {
  fRef = ref ? *ref : entry_ref();
  if (fRef.IsEmpty()) return fStatus = B_BAD_VALUE;
  std::error_code error;
  const std::string path = fRef.FullPath();
  struct stat info {};
  if (traverse && lstat(path.c_str(), &info) == 0 && S_ISLNK(info.st_mode)) {
    return fStatus = get_ref_for_path(std::filesystem::weakly_canonical(path, error).c_str(), &fRef);
  }
  return fStatus = B_OK;
}

status_t BEntry::SetTo(const BDirectory* directory, const char* name, bool traverse) {
  if (directory == nullptr || directory->InitCheck() != B_OK) return fStatus = B_BAD_VALUE;
  return SetTo((directory->Path() + "/" + name).c_str(), traverse);
}

namespace {

bool stat_of(const entry_ref& ref, struct stat* result) {
  return !ref.IsEmpty() && stat(ref.FullPath().c_str(), result) == 0;
}

} // namespace

bool BEntry::Exists() const {
  struct stat info {};
  return !fRef.IsEmpty() && lstat(fRef.FullPath().c_str(), &info) == 0;
}

bool BEntry::IsFile() const {
  struct stat info {};
  return stat_of(fRef, &info) && S_ISREG(info.st_mode);
}

bool BEntry::IsDirectory() const {
  struct stat info {};
  return stat_of(fRef, &info) && S_ISDIR(info.st_mode);
}

status_t BEntry::GetRef(entry_ref* ref) const {
  if (fStatus == B_OK) *ref = fRef;
  return fStatus;
}

status_t BEntry::GetPath(BPath* path) const {
  return fStatus == B_OK ? path->SetTo(fRef.FullPath().c_str()) : fStatus;
}

status_t BEntry::GetSize(off_t* size) const {
  struct stat info {};
  if (!stat_of(fRef, &info)) return fRef.IsEmpty() ? B_NO_INIT : status_of_errno(errno);
  *size = info.st_size;
  return B_OK;
}

status_t BEntry::GetModificationTime(int64* seconds, int32* nanoseconds) const {
  struct stat info {};
  if (!stat_of(fRef, &info)) return fRef.IsEmpty() ? B_NO_INIT : status_of_errno(errno);
  *seconds = info.st_mtim.tv_sec;
  if (nanoseconds) *nanoseconds = static_cast<int32>(info.st_mtim.tv_nsec);
  return B_OK;
}
