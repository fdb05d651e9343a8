#pragma once

#include "platform/support/geometry.h"
#include "platform/support/types.h"

#include <string>

class BEntry;
class BMessage;
struct entry_ref;

namespace koreva {

/** A record that is stored in a file as one flattened (serialized) message of named fields. */
class TArchivable {
public:
  TArchivable() = default;
  TArchivable(const TArchivable&) = default;
  TArchivable& operator=(const TArchivable&) = default;
  virtual ~TArchivable() = default;

  virtual bool Archive(BMessage* archive);
  /** An absent field keeps the current value. A field of the wrong type is an error; the others are still read. */
  virtual bool Unarchive(const BMessage& archive);
  /** False when the file cannot be opened or read; otherwise the result of `Unarchive`. */
  virtual bool Load(const BEntry& entry);
  /** Replaces the file atomically (atomic_replace.h), unless its content is the same. An existing file that cannot be
      read is first copied to "<name>.unreadable" (".unreadable.2" and so on). False, with the reason logged, when the
      record cannot be archived or written. */
  virtual bool Save(const BEntry& entry);

protected:
  /** Set the output only if the field is found; return the status of the search. */
  static status_t Find(const BMessage& archive, const char* name, bool* value, int32 index = 0);
  static status_t Find(const BMessage& archive, const char* name, int32* value, int32 index = 0);
  static status_t Find(const BMessage& archive, const char* name, int64* value, int32 index = 0);
  static status_t Find(const BMessage& archive, const char* name, float* value, int32 index = 0);
  static status_t Find(const BMessage& archive, const char* name, double* value, int32 index = 0);
  static status_t Find(const BMessage& archive, const char* name, std::string* value, int32 index = 0);
  /** The result points into the archive. A string without its terminating NUL has the wrong type. */
  static status_t Find(const BMessage& archive, const char* name, const char** value, int32 index = 0);
  /** Raw bytes of that type, owned by the archive. */
  static status_t Find(const BMessage& archive, const char* name, type_code type, const void** bytes, ssize_t* size,
                       int32 index = 0);
  static status_t Find(const BMessage& archive, const char* name, BRect* value, int32 index = 0);
  static status_t Find(const BMessage& archive, const char* name, entry_ref* value, int32 index = 0);
  static status_t Find(const BMessage& archive, const char* name, BMessage* value, int32 index = 0);
  /** Four bytes of type 'RAWT': red, green, blue, alpha. */
  static status_t Find(const BMessage& archive, const char* name, rgb_color* value, int32 index = 0);

  /** For records: reads an optional field. False only if the field is present with another type. */
  template <typename T>
  static bool Read(const BMessage& archive, const char* name, T* value) {
    return IsPresentOrAbsent(Find(archive, name, value));
  }

private:
  static bool IsPresentOrAbsent(status_t status) { return status == B_OK || status == B_NAME_NOT_FOUND; }
};

} // namespace koreva
