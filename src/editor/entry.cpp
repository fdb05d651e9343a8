#include "editor/vesmo_e.h"

#include <memory>

/** The one name that the image exports. */
extern "C" __attribute__((visibility("default"))) GeneralPlugin* NewPlugin(PluginConstructorStruct* record) {
  auto plugin = std::make_unique<TVesmoE>(record);
  record->built = 1;
  return plugin.release();
}
