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
  B_FAIL_IF_EXISTS = 0x0100,
  B_ERASE_FILE = 0x0400,
  B_OPEN_AT_END = 0x0800,
};

/** An open file. Opening never blocks: a pipe or device opens or fails at once. */
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

  ssize_t Read(void* buffer, size_t size) override;
  ssize_t Write(const void* buffer, size_t size) override;
  off_t Seek(off_t position, uint32 mode) override;
  off_t Position() const override;
  status_t SetSize(off_t size) override;
  status_t GetSize(off_t* size) const override;
  /** Waits until the bytes are on the disk. */
  status_t Sync();
  bool IsDirectory() const;
  /** True for an ordinary file: not a folder, device, socket or pipe. */
  bool IsRegular() const;
  /** The file descriptor, owned by this object; -1 while closed. */
  int Descriptor() const { return fDescriptor; }

private:
  int fDescriptor = -1;
  status_t fStatus = B_NO_INIT;
};
