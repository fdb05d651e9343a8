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

/** Makes a call into a plug-in. Returns how it failed; empty when it did not. */
template <typename Call>
std::string failure_of(Call call) {
  try {
    call();
    return {};
  } catch (const std::exception& error) {
    return std::string("failed: ") + error.what();
  } catch (...) {
    return "failed";
  }
}

using NewPluginFunction = GeneralPlugin* (*)(PluginConstructorStruct*);

/** Null, and the reason, when the plug-in cannot be built. */
GeneralPlugin* build_plugin(NewPluginFunction construct, std::string* reason) {
  PluginConstructorStruct record;
  GeneralPlugin* plugin = nullptr;
  *reason = failure_of([&] { plugin = construct(&record); });
  if (plugin == nullptr && reason->empty()) *reason = "gave no plug-in";
  return plugin;
}

} // namespace

std::vector<std::string> TPluginLoader::LoadAll(const std::string& folder, const TWanted& wanted) {
  std::vector<std::string> faults;
  BDirectory directory(folder.c_str());
  BEntry entry;
  while (directory.GetNextEntry(&entry) == B_OK) {
    if (!is_plugin_name(entry.Name()) || !wanted(entry.Name())) continue;
    const std::string reason = LoadOne(folder, entry.Name());
    if (reason.empty()) continue;
    faults.push_back("Plug-in " + entry.Name() + " " + reason);
  }
  return faults;
}

std::string TPluginLoader::LoadOne(const std::string& folder, const std::string& fileName) {
  void* const image = dlopen((folder + "/" + fileName).c_str(), RTLD_NOW | RTLD_LOCAL);
  if (image == nullptr) return std::string("cannot be loaded: ") + dlerror();
  const auto construct = reinterpret_cast<NewPluginFunction>(dlsym(image, "NewPlugin"));
  std::string reason = "is no plug-in: it has no NewPlugin";
  GeneralPlugin* const plugin = construct ? build_plugin(construct, &reason) : nullptr;
  if (plugin == nullptr) {
    // What failed half-way may have left a thread in the image: only one that was never entered is unloaded.
    if (construct == nullptr) dlclose(image);
    return reason;
  }
  fPlugins.push_back({fileName, image, std::unique_ptr<GeneralPlugin>(plugin)});
  // One that fails here may have shown something: it is cleaned up at the end like the others.
  return failure_of([plugin] { plugin->Init(); });
}

std::string TPluginLoader::Name(int index) const {
  const TPlugin& plugin = fPlugins.at(static_cast<size_t>(index));
  return plugin.object->fName ? plugin.object->fName : plugin.fileName;
}

std::string TPluginLoader::Info(int index) const {
  const char* const info = At(index)->fInfo;
  return info ? info : Name(index);
}

void TPluginLoader::UnloadAll() {
  for (auto plugin = fPlugins.rbegin(); plugin != fPlugins.rend(); ++plugin) {
    const int32 loopersBefore = be_app ? be_app->CountLoopers() : 0;
    const std::string failure = failure_of([&] { plugin->object->Cleanup(); });
    if (!failure.empty()) log_error("plug-ins", "a plug-in's clean-up " + failure);
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
