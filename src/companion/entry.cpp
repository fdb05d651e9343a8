#include "companion/vesmo_d.h"

#include <memory>

/** The only symbol that the image exports. */
extern "C" __attribute__((visibility("default"))) GeneralPlugin* NewPlugin(PluginConstructorStruct* record) {
  auto plugin = std::make_unique<TVesmoD>(record);
  record->built = 1;
  return plugin.release();
}
