#pragma once

#include "platform/kernel/unique_fd.h"
#include "platform/storage/file.h"

#include <sys/mman.h>

#include <string>
#include <string_view>

/** A file that exists in memory only; opened for reading and writing, at its start. */
struct MemoryFile : BFile {
  explicit MemoryFile(std::string_view bytes) : fMemory(memfd_create("test", MFD_CLOEXEC)) {
    SetTo(("/proc/self/fd/" + std::to_string(fMemory.Get())).c_str(), B_READ_WRITE);
    [[maybe_unused]] const ssize_t written = pwrite(Descriptor(), bytes.data(), bytes.size(), 0);
  }
  std::string Contents() const {
    off_t size = 0;
    if (GetSize(&size) != B_OK) return {};
    std::string bytes(static_cast<size_t>(size), '\0');
    return pread(Descriptor(), bytes.data(), bytes.size(), 0) == size ? bytes : std::string();
  }

private:
  UniqueFd fMemory;
};
