#include "player/plugin_loader.h"

#include "platform/app/application.h"
#include "platform/kernel/images.h"
#include "platform/storage/directory.h"
#include "platform/storage/path.h"
#include "platform/support/log.h"
#include "plugin/general_plugin.h"

#include <dlfcn.h>

#include <cstdlib>
#include <exception>

TPluginLoader::TPluginLoader() = default;
TPluginLoader::~TPluginLoader() {
  UnloadAll();
}

namespace {

bool is_plugin_name(const std::string& name) {
  return name.starts_with("gen_") && name.ends_with(".so");
}

using NewPluginFunction = GeneralPlugin* (*)(PluginConstructorStruct*);

/** Null, and the reason, when the plug-in cannot be built. */
GeneralPlugin* build_plugin(NewPluginFunction construct, std::string* reason) {
  PluginConstructorStruct record;
  try {
    GeneralPlugin* const plugin = construct(&record);
    if (plugin == nullptr) *reason = "gave no plug-in";
    return plugin;
  } catch (const std::exception& error) {
    *reason = std::string("failed: ") + error.what();
  } catch (...) {
    *reason = "failed";
  }
  return nullptr;
}

} // namespace

std::vector<std::string> TPluginLoader::LoadAll(const std::string& folder) {
  std::vector<std::string> faults;
  BDirectory directory(folder.c_str());
  BEntry entry;
  while (directory.GetNextEntry(&entry) == B_OK) {
    if (!is_plugin_name(entry.Name())) continue;
    const std::string reason = LoadOne(folder + "/" + entry.Name());
    if (reason.empty()) continue;
    faults.push_back("Plug-in " + entry.Name() + " " + reason);
    log_error("plug-ins", faults.back());
  }
  return faults;
}

std::string TPluginLoader::LoadOne(const std::string& path) {
  void* const image = dlopen(path.c_str(), RTLD_NOW | RTLD_LOCAL);
  if (image == nullptr) return std::string("cannot be loaded: ") + dlerror();
  const auto construct = reinterpret_cast<NewPluginFunction>(dlsym(image, "NewPlugin"));
  std::string reason = "is no plug-in: it has no NewPlugin";
  GeneralPlugin* const plugin = construct ? build_plugin(construct, &reason) : nullptr;
  if (plugin == nullptr) {
    // What failed half-way may have left a thread in the image: only one that was never entered is unloaded.
    if (construct == nullptr) dlclose(image);
    return reason;
  }
  fPlugins.push_back({image, std::unique_ptr<GeneralPlugin>(plugin)});
  plugin->Init();
  return {};
}

void TPluginLoader::UnloadAll() {
  for (auto plugin = fPlugins.rbegin(); plugin != fPlugins.rend(); ++plugin) {
    const int32 loopersBefore = be_app ? be_app->CountLoopers() : 0;
    plugin->object->Cleanup();
    plugin->object.reset();
    // A plug-in's loopers are gone when its destructor returns; one that kept all of its own stays mapped.
    const bool endedSome = be_app == nullptr || be_app->CountLoopers() < loopersBefore;
    if (endedSome) dlclose(plugin->image);
  }
  fPlugins.clear();
}

std::string plugin_folder() {
  if (const char* folder = std::getenv("SONIVO_PLUGINS")) return folder;
  int32 cookie = 0;
  image_info program;
  BPath parent;
  if (get_next_image_info(&cookie, &program) != B_OK || BPath(program.name.c_str()).GetParent(&parent) != B_OK)
    return {};
  return std::string(parent.Path()) + "/plugins";
}
