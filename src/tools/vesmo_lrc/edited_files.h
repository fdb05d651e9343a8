#pragma once

#include "platform/support/types.h"

#include <map>
#include <optional>
#include <sys/stat.h>
#include <utility>

/** The files in which editors had unsaved changes when the program started: rewritten, they would be overwritten by the
    editor's next save, or overwrite it. Any thread. */
class TEditedFiles {
public:
  TEditedFiles();

  /** The process of the editor; nothing for a file that no editor has changed. */
  std::optional<int32> ProcessOf(const struct stat& file) const;

private:
  std::map<std::pair<dev_t, ino_t>, int32> fProcesses;
};
