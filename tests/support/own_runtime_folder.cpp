#include "tests/support/scratch_folder.h"

#include <cstdlib>

namespace {

/** Gives each test process its own runtime folder before anything uses it, so that tests running in parallel do not
    connect to each other, and folders of its own for settings, caches and journals, so that it neither touches those of
    the user nor sees what another test has stored. The data folders do not exist, so that tests never start installed
    programs. */
struct OwnRuntimeFolder {
  OwnRuntimeFolder() {
    setenv("XDG_RUNTIME_DIR", fFolder.Path().c_str(), 1);
    setenv("XDG_CONFIG_HOME", fFolder.File("config").c_str(), 1);
    setenv("XDG_CACHE_HOME", fFolder.File("cache").c_str(), 1);
    setenv("XDG_STATE_HOME", fFolder.File("state").c_str(), 1);
    setenv("XDG_DATA_HOME", fFolder.File("data").c_str(), 1);
    setenv("XDG_DATA_DIRS", fFolder.File("data").c_str(), 1);
  }
  ScratchFolder fFolder;
};

const OwnRuntimeFolder gOwnRuntimeFolder;

} // namespace
