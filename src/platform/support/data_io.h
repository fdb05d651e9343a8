#pragma once

#include "platform/support/types.h"

#include <sys/types.h>

/** A seekable stream of bytes. Reads and writes return the number of bytes, 0 at the end, or a negative status. Not
    thread-safe. */
class BPositionIO {
public:
  BPositionIO() = default;
  BPositionIO(const BPositionIO&) = delete;
  BPositionIO& operator=(const BPositionIO&) = delete;
  virtual ~BPositionIO() = default;

  [[nodiscard]] virtual ssize_t Read(void* buffer, size_t size) = 0;
  [[nodiscard]] virtual ssize_t Write(const void* buffer, size_t size) = 0;
  /** `mode` is SEEK_SET, SEEK_CUR or SEEK_END; returns the new position or a negative status. */
  [[nodiscard]] virtual off_t Seek(off_t position, uint32 mode) = 0;
  virtual off_t Position() const = 0;
  [[nodiscard]] virtual status_t SetSize(off_t size) = 0;
  [[nodiscard]] virtual status_t GetSize(off_t* size) const = 0;
};

/** A read-only stream over memory of the caller. */
class BMemoryIO : public BPositionIO {
public:
  BMemoryIO(const void* bytes, size_t size);

  [[nodiscard]] ssize_t Read(void* buffer, size_t size) override;
  /** B_PERMISSION_DENIED. */
  [[nodiscard]] ssize_t Write(const void* buffer, size_t size) override;
  [[nodiscard]] off_t Seek(off_t position, uint32 mode) override;
  off_t Position() const override { return fPosition; }
  [[nodiscard]] status_t SetSize(off_t size) override;
  [[nodiscard]] status_t GetSize(off_t* size) const override;

private:
  const char* fBytes;
  off_t fSize;
  off_t fPosition = 0;
};
