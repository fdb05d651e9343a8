#pragma once

#include "platform/support/types.h"

#include <string>

/** What the headers of an ELF file tell before the dynamic linker maps it. The linker trusts them: a file that is
    shorter than they say ends the process by SIGBUS when a missing page is touched. */
struct TElfImage {
  /** Why the file cannot be mapped; empty when it can. */
  std::string fault = {};
  /** The linker's build ID; empty when the file has none. */
  std::string buildId = {};
};

/** Reads with pread and trusts no offset or length of the file. */
TElfImage read_elf_image(int file, uint64 size);
