#include "plugin/general_plugin.h"

#include <stdexcept>

namespace {

struct Unwell : GeneralPlugin {
  bool Init() override { throw std::runtime_error("no window to show"); }
  void Cleanup() override { throw std::runtime_error("nothing to clean"); }
  bool About(bool) override { return false; }
  bool Prefs(bool) override { return false; }
  uint32 GetFlags() override { return 0; }
};

} // namespace

extern "C" GeneralPlugin* NewPlugin(PluginConstructorStruct*) {
  return new Unwell;
}
