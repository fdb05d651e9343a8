#include "common/archivable.h"

#include "common/atomic_replace.h"
#include "common/file_replacement.h"
#include "common/unique_file.h"
#include "platform/app/message.h"
#include "platform/storage/entry.h"
#include "platform/storage/file.h"
#include "platform/storage/status_of.h"
#include "platform/support/log.h"

#include <cstring>

namespace koreva {

bool TArchivable::Archive(BMessage*) {
  return true;
}
bool TArchivable::Unarchive(const BMessage&) {
  return true;
}

bool TArchivable::Load(const BEntry& entry) {
  BFile file(&entry, B_READ_ONLY);
  BMessage archive;
  if (file.InitCheck() != B_OK || !file.IsRegular() || archive.Unflatten(&file) != B_OK) return false;
  return Unarchive(archive);
}

namespace {

enum class TStored { kNothing, kTheSame, kAnother, kForeign };

TStored what_is_stored(const BEntry& entry, const BMessage& archive) {
  BFile file(&entry, B_READ_ONLY);
  off_t size = 0;
  if (file.InitCheck() == B_PERMISSION_DENIED) return TStored::kForeign;
  if (file.InitCheck() != B_OK || !file.IsRegular() || file.GetSize(&size) != B_OK || size == 0)
    return TStored::kNothing;
  BMessage stored;
  if (stored.Unflatten(&file) != B_OK) return TStored::kForeign;
  return stored.Flatten() == archive.Flatten() ? TStored::kTheSame : TStored::kAnother;
}

/** Copies the file to the first unused ".unreadable[.N]" name; never overwrites an earlier backup. */
void keep_unreadable(const std::string& path) {
  TFileTarget target;
  if (find_file_target(path, &target) == B_IS_A_DIRECTORY) return;
  const TNameOf nameOf = numbered_names(path + ".unreadable");
  // If it cannot be copied (disk full, no permission to read), it is renamed instead.
  if (copy_to_unique_file(target.path, nameOf).empty() && !rename_to_unique(target.path, nameOf))
    log_error("settings", target.path + " cannot be read, and could not be kept either");
}

} // namespace

bool TArchivable::Save(const BEntry& entry) {
  entry_ref ref;
  BMessage archive;
  if (entry.GetRef(&ref) != B_OK || !Archive(&archive)) return false;
  const TStored stored = what_is_stored(entry, archive);
  if (stored == TStored::kTheSame) return true; // unchanged: skip the write and its fsync, which also runs at start-up
  const std::string path = ref.FullPath();
  // A truncated file, or one of another program, may still be useful to the user.
  if (stored == TStored::kForeign) keep_unreadable(path);
  const std::vector<char> bytes = archive.Flatten();
  const status_t status = atomic_replace(path, {bytes.data(), bytes.size()}, TFlush::kFile);
  if (status != B_OK) log_error("settings", path + " could not be saved: " + status_text(status));
  return status == B_OK;
}

status_t TArchivable::Find(const BMessage& archive, const char* name, bool* value, int32 index) {
  return archive.FindBool(name, index, value);
}
status_t TArchivable::Find(const BMessage& archive, const char* name, int32* value, int32 index) {
  return archive.FindInt32(name, index, value);
}
status_t TArchivable::Find(const BMessage& archive, const char* name, int64* value, int32 index) {
  return archive.FindInt64(name, index, value);
}
status_t TArchivable::Find(const BMessage& archive, const char* name, float* value, int32 index) {
  return archive.FindFloat(name, index, value);
}
status_t TArchivable::Find(const BMessage& archive, const char* name, double* value, int32 index) {
  return archive.FindDouble(name, index, value);
}
status_t TArchivable::Find(const BMessage& archive, const char* name, std::string* value, int32 index) {
  return archive.FindString(name, index, value);
}
status_t TArchivable::Find(const BMessage& archive, const char* name, BRect* value, int32 index) {
  return archive.FindRect(name, index, value);
}
status_t TArchivable::Find(const BMessage& archive, const char* name, entry_ref* value, int32 index) {
  return archive.FindRef(name, index, value);
}
status_t TArchivable::Find(const BMessage& archive, const char* name, BMessage* value, int32 index) {
  return archive.FindMessage(name, index, value);
}

status_t TArchivable::Find(const BMessage& archive, const char* name, const char** value, int32 index) {
  const void* bytes = nullptr;
  ssize_t size = 0;
  const status_t status = Find(archive, name, B_STRING_TYPE, &bytes, &size, index);
  if (status != B_OK) return status;
  const char* const text = static_cast<const char*>(bytes);
  if (size == 0 || text[size - 1] != '\0') return B_BAD_TYPE;
  *value = text;
  return B_OK;
}

/** Sets both outputs or neither. */
status_t TArchivable::Find(const BMessage& archive, const char* name, type_code type, const void** bytes, ssize_t* size,
                           int32 index) {
  const void* found = nullptr;
  ssize_t foundSize = 0;
  const status_t status = archive.FindData(name, type, index, &found, &foundSize);
  if (status != B_OK) return status;
  *bytes = found;
  *size = foundSize;
  return B_OK;
}

status_t TArchivable::Find(const BMessage& archive, const char* name, rgb_color* value, int32 index) {
  const void* bytes = nullptr;
  ssize_t size = 0;
  const status_t status = Find(archive, name, B_RAW_TYPE, &bytes, &size, index);
  if (status != B_OK) return status;
  if (size != sizeof *value) return B_BAD_TYPE;
  std::memcpy(value, bytes, sizeof *value);
  return B_OK;
}

} // namespace koreva
