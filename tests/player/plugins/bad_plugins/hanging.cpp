#include "plugin/general_plugin.h"

#include <unistd.h>

extern "C" GeneralPlugin* NewPlugin(PluginConstructorStruct*) {
  for (;;) pause();
}
