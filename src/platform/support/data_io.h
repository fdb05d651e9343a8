#pragma once

#include "platform/support/types.h"

#include <sys/types.h>
#include <vector>

/** A seekable stream of bytes. Reads and writes return the count of bytes moved (0 at the end) or a negative status. */
class BPositionIO {
public:
  BPositionIO() = default;
  BPositionIO(const BPositionIO&) = delete;
  BPositionIO& operator=(const BPositionIO&) = delete;
  virtual ~BPositionIO() = default;

  virtual ssize_t Read(void* buffer, size_t size) = 0;
  virtual ssize_t Write(const void* buffer, size_t size) = 0;
  /** `mode` is SEEK_SET, SEEK_CUR or SEEK_END; returns the new position or a negative status. */
  virtual off_t Seek(off_t position, uint32 mode) = 0;
  virtual off_t Position() const = 0;
  virtual status_t SetSize(off_t size) = 0;
  virtual status_t GetSize(off_t* size) const = 0;
};

/** A stream over memory of its own, which grows as it is written. */
class BMallocIO : public BPositionIO {
public:
  ssize_t Read(void* buffer, size_t size) override;
  ssize_t Write(const void* buffer, size_t size) override;
  off_t Seek(off_t position, uint32 mode) override;
  off_t Position() const override { return fPosition; }
  status_t SetSize(off_t size) override;
  status_t GetSize(off_t* size) const override;

  const void* Buffer() const { return fBytes.data(); }
  size_t BufferLength() const { return fBytes.size(); }

private:
  std::vector<char> fBytes;
  off_t fPosition = 0;
};

/** A stream over memory of the caller, read only when built from const memory; never grows. */
class BMemoryIO : public BPositionIO {
public:
  BMemoryIO(const void* bytes, size_t size);
  BMemoryIO(void* bytes, size_t size);

  ssize_t Read(void* buffer, size_t size) override;
  ssize_t Write(const void* buffer, size_t size) override;
  off_t Seek(off_t position, uint32 mode) override;
  off_t Position() const override { return fPosition; }
  status_t SetSize(off_t size) override;
  status_t GetSize(off_t* size) const override;

private:
  const char* fRead;
  char* fWrite;
  off_t fSize;
  off_t fPosition = 0;
};
