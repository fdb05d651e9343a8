#pragma once

#include "platform/support/geometry.h"
#include "platform/support/types.h"

#include <string>

class BEntry;
class BMessage;
struct entry_ref;

namespace koreva {

/** A record that is kept in a file as one flattened message of named fields. */
class TArchivable {
public:
  TArchivable() = default;
  TArchivable(const TArchivable&) = default;
  TArchivable& operator=(const TArchivable&) = default;
  virtual ~TArchivable() = default;

  virtual bool Archive(BMessage* archive);
  /** An absent field keeps the current value and is no failure; one of the wrong type is, and the rest is still read.
   */
  virtual bool Unarchive(const BMessage& archive);
  /** False when the file cannot be opened or read; else what `Unarchive` says. */
  virtual bool Load(const BEntry& entry);
  /** Replaces the file atomically (atomic_replace.h). False, logged with its reason, when the record cannot be archived
      or written. A file with the same content is not written again; one that could not be read is kept beside it as
      "<name>.unreadable" (then ".unreadable.2" and so on). */
  virtual bool Save(const BEntry& entry);

protected:
  /** Each writes its output only when the field is found, and returns the find's status. */
  static status_t Find(const BMessage& archive, const char* name, bool* value, int32 index = 0);
  static status_t Find(const BMessage& archive, const char* name, int32* value, int32 index = 0);
  static status_t Find(const BMessage& archive, const char* name, int64* value, int32 index = 0);
  static status_t Find(const BMessage& archive, const char* name, float* value, int32 index = 0);
  static status_t Find(const BMessage& archive, const char* name, double* value, int32 index = 0);
  static status_t Find(const BMessage& archive, const char* name, std::string* value, int32 index = 0);
  /** Points into the archive. A text that does not end in its NUL is of the wrong type. */
  static status_t Find(const BMessage& archive, const char* name, const char** value, int32 index = 0);
  /** Raw bytes of that type; they stay the archive's. */
  static status_t Find(const BMessage& archive, const char* name, type_code type, const void** bytes, ssize_t* size,
                       int32 index = 0);
  static status_t Find(const BMessage& archive, const char* name, BRect* value, int32 index = 0);
  static status_t Find(const BMessage& archive, const char* name, entry_ref* value, int32 index = 0);
  static status_t Find(const BMessage& archive, const char* name, BMessage* value, int32 index = 0);
  /** Four bytes of type 'RAWT': red, green, blue, alpha. */
  static status_t Find(const BMessage& archive, const char* name, rgb_color* value, int32 index = 0);

  /** For records: reads the field if it is there; false only when it is there and is something else. */
  template <typename T>
  static bool Read(const BMessage& archive, const char* name, T* value) {
    return IsPresentOrAbsent(Find(archive, name, value));
  }

private:
  static bool IsPresentOrAbsent(status_t status) { return status == B_OK || status == B_NAME_NOT_FOUND; }
};

} // namespace koreva
