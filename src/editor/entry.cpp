#include "editor/vesmo_e.h"

#include <memory>

/** The only exported symbol of the image. */
extern "C" __attribute__((visibility("default"))) GeneralPlugin* NewPlugin(PluginConstructorStruct* record) {
  auto plugin = std::make_unique<TVesmoE>(record);
  record->built = 1;
  return plugin.release();
}
