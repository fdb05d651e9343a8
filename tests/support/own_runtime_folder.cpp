#include "tests/support/scratch_folder.h"

#include <cstdlib>

namespace {

/** Programs of one user find each other by their runtime folder: each test process gets one of its own, before anything
    looks for it, so that tests that run at the same time are strangers. The data folders, which do not exist, keep
   tests from finding and starting installed programs. */
struct OwnRuntimeFolder {
  OwnRuntimeFolder() {
    setenv("XDG_RUNTIME_DIR", fFolder.Path().c_str(), 1);
    setenv("XDG_DATA_HOME", fFolder.File("data").c_str(), 1);
    setenv("XDG_DATA_DIRS", fFolder.File("data").c_str(), 1);
  }
  ScratchFolder fFolder;
};

const OwnRuntimeFolder gOwnRuntimeFolder;

} // namespace
