#include "plugin/general_plugin.h"

#include <stdexcept>

extern "C" GeneralPlugin* NewPlugin(PluginConstructorStruct*) {
  throw std::runtime_error("no memory for lyrics");
}
