#include "plugin/general_plugin.h"

extern "C" GeneralPlugin* NewPlugin(PluginConstructorStruct*) {
  return nullptr;
}
