#pragma once

#include "platform/support/types.h"

#include <string>

/** The headers of an ELF file, validated before the dynamic linker maps it. The linker trusts them: a truncated file
    ends the process by SIGBUS when a missing page is touched. */
struct TElfImage {
  /** Why the file must not be mapped; empty if it may. */
  std::string error = {};
  /** The linker's build ID; empty if there is none. */
  std::string buildId = {};
};

/** Reads with pread and trusts no offset or length of the file. */
TElfImage read_elf_image(int file, uint64 size);
