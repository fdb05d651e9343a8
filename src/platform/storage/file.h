#pragma once

#include "platform/storage/entry_ref.h"
#include "platform/support/data_io.h"

class BDirectory;
class BEntry;

enum : uint32 {
  B_READ_ONLY = 0,
  B_WRITE_ONLY = 1,
  B_READ_WRITE = 2,
  B_CREATE_FILE = 0x0200,
  B_ERASE_FILE = 0x0400,
};

/** An open file; the destructor closes it. Opening does not block: a pipe or device opens or fails at once. Not
    thread-safe. */
class BFile : public BPositionIO {
public:
  BFile() = default;
  BFile(const char* path, uint32 openMode);
  BFile(const entry_ref* ref, uint32 openMode);
  BFile(const BEntry* entry, uint32 openMode);
  ~BFile() override;

  status_t SetTo(const char* path, uint32 openMode);
  status_t SetTo(const entry_ref* ref, uint32 openMode);
  status_t SetTo(const BEntry* entry, uint32 openMode);
  status_t SetTo(const BDirectory* directory, const char* name, uint32 openMode);
  void Unset();
  status_t InitCheck() const { return fStatus; }

  /** Repeats a call that a signal interrupted. */
  [[nodiscard]] ssize_t Read(void* buffer, size_t size) override;
  [[nodiscard]] ssize_t Write(const void* buffer, size_t size) override;
  [[nodiscard]] off_t Seek(off_t position, uint32 mode) override;
  off_t Position() const override;
  [[nodiscard]] status_t SetSize(off_t size) override;
  [[nodiscard]] status_t GetSize(off_t* size) const override;
  /** Blocks until the bytes are on the disk. */
  [[nodiscard]] status_t Sync();
  bool IsDirectory() const;
  /** False for a folder, device, socket or pipe. */
  bool IsRegular() const;
  /** The file descriptor, owned by this object; -1 while closed. */
  int Descriptor() const { return fDescriptor; }

private:
  int fDescriptor = -1;
  status_t fStatus = B_NO_INIT;
};
