#include "player/plugins/plugin_loader.h"

#include "platform/kernel/images.h"
#include "platform/kernel/threads.h"
#include "platform/storage/directory.h"
#include "platform/storage/path.h"
#include "player/texts/player_texts.h"

#include <algorithm>
#include <cstdlib>
#include <system_error>
#include <utility>

namespace {

bool is_plugin_name(const std::string& name) {
  return name.starts_with("gen_") && name.ends_with(".so");
}

const char* name_of(TPluginCall call) {
  switch (call) {
  case TPluginCall::kLoad:
    return "NewPlugin";
  case TPluginCall::kShow:
    return "Init";
  case TPluginCall::kPrefs:
    return "Prefs";
  case TPluginCall::kAbout:
    return "About";
  case TPluginCall::kEnd:
    break;
  }
  return "Cleanup";
}

} // namespace

TPluginLoader::TPluginLoader(std::function<void()> answered, bigtime_t timeoutUs)
    : fAnswered(std::move(answered)), fTimeoutUs(timeoutUs) {}

void TPluginLoader::Load(const std::string& folder, const TWanted& wanted) {
  BDirectory directory(folder.c_str());
  BEntry entry;
  while (directory.GetNextEntry(&entry) == B_OK) {
    if (is_plugin_name(entry.Name()) && wanted(entry.Name())) fWaiting.push_back({folder, entry.Name()});
  }
}

void TPluginLoader::BeginEnd() {
  fIsEnding = true;
  fWaiting.clear();
}

std::vector<std::string> TPluginLoader::Proceed() {
  fThread.Check();
  for (const auto& plugin : fPlugins) LookAt(*plugin);
  std::erase_if(fBuilt, [](const TPlugin* plugin) { return plugin->thread == nullptr; });
  std::erase_if(fPlugins, [](const auto& plugin) { return plugin->thread == nullptr; });
  while (!fWaiting.empty() && !IsOneComing()) {
    Begin(fWaiting.front());
    fWaiting.pop_front();
  }
  if (fIsEnding) EndNext();
  return std::exchange(fErrors, {});
}

void TPluginLoader::LookAt(TPlugin& plugin) {
  const TPluginThread::TState state = plugin.thread->TakeState();
  for (const std::string& failure : state.failures) fErrors.push_back(failure);
  plugin.name = state.name;
  plugin.info = state.info;
  plugin.isBusy = state.isBusy;
  const bool isOverdue = state.call && system_time() - state.sinceUs >= fTimeoutUs;
  if (isOverdue && !plugin.isOverdue)
    fErrors.push_back(player_text("Player_Plugin_Hangs", {plugin.fileName, name_of(*state.call)}));
  plugin.isOverdue = isOverdue;
  if (!plugin.isBusy) Advance(plugin, state.isBuilt);
}

/** The plug-in has no pending calls. */
void TPluginLoader::Advance(TPlugin& plugin, bool isBuilt) {
  if (plugin.stage == TStage::kEnding || !isBuilt)
    plugin.thread.reset();
  else if (plugin.stage == TStage::kLoading)
    Built(plugin);
  else
    plugin.stage = TStage::kShown;
}

/** Two plug-ins of one name, probably two versions, would interfere with each other's windows and settings. */
void TPluginLoader::Built(TPlugin& plugin) {
  const auto same = std::find_if(fBuilt.begin(), fBuilt.end(),
                                 [&plugin](const TPlugin* other) { return other->name == plugin.name; });
  if (same != fBuilt.end()) {
    fErrors.push_back(player_text("Player_Plugin_Same_Name", {plugin.fileName, (*same)->fileName, plugin.name}));
    return Ask(plugin, TStage::kEnding, TPluginCall::kEnd);
  }
  fBuilt.push_back(&plugin);
  Ask(plugin, TStage::kShowing, TPluginCall::kShow);
}

void TPluginLoader::Begin(const TCandidate& candidate) {
  TPluginFile file;
  if (const std::string error = check_plugin_file(candidate.folder + "/" + candidate.fileName, &file); !error.empty())
    return Refuse(candidate.fileName, error);
  for (const auto& other : fPlugins) {
    if (other->file.IsSameAs(file))
      return Refuse(candidate.fileName, player_text("Player_Plugin_Same", {other->fileName}));
  }
  try {
    auto thread = std::make_unique<TPluginThread>(candidate.fileName, fAnswered);
    thread->Load(file.path);
    fPlugins.push_back(
        std::make_unique<TPlugin>(TPlugin{.file = file, .fileName = candidate.fileName, .thread = std::move(thread)}));
  } catch (const std::system_error& error) {
    Refuse(candidate.fileName, player_text("Player_Plugin_No_Thread", {error.what()}));
  }
}

/** One after another. A plug-in that hangs is not waited for, but still ends properly if it returns. */
void TPluginLoader::EndNext() {
  for (auto plugin = fPlugins.rbegin(); plugin != fPlugins.rend(); ++plugin) {
    if ((*plugin)->stage != TStage::kEnding) Ask(**plugin, TStage::kEnding, TPluginCall::kEnd);
    if (!(*plugin)->isOverdue) return;
  }
}

void TPluginLoader::Make(int index, TPluginCall call) {
  TPlugin& plugin = *fBuilt.at(static_cast<size_t>(index));
  if (!fIsEnding) Ask(plugin, plugin.stage, call);
}

void TPluginLoader::Ask(TPlugin& plugin, TStage stage, TPluginCall call) {
  plugin.stage = stage;
  plugin.isBusy = true;
  plugin.thread->Make(call);
}

bool TPluginLoader::IsOneComing() const {
  return std::any_of(fPlugins.begin(), fPlugins.end(),
                     [](const auto& plugin) { return !plugin->isOverdue && plugin->stage < TStage::kShown; });
}

bool TPluginLoader::IsLoading() const {
  return !fWaiting.empty() || IsOneComing();
}

bool TPluginLoader::IsBusy() const {
  return !fWaiting.empty() ||
         std::any_of(fPlugins.begin(), fPlugins.end(), [](const auto& plugin) { return plugin->isBusy; });
}

bool TPluginLoader::HasEnded() const {
  return fIsEnding &&
         std::all_of(fPlugins.begin(), fPlugins.end(), [](const auto& plugin) { return plugin->isOverdue; });
}

void TPluginLoader::Refuse(const std::string& fileName, const std::string& reason) {
  fErrors.push_back(player_text("Player_Plugin_Refused", {fileName, reason}));
}

std::string plugin_folder(std::string* error) {
  if (const char* folder = std::getenv("SONIVO_PLUGINS"); folder && *folder) {
    if (*folder == '/') return folder;
    *error = player_text("Player_Plugin_Setting", {folder});
  }
  int32 cookie = 0;
  image_info program;
  BPath parent;
  if (get_next_image_info(&cookie, &program) != B_OK || BPath(program.name.c_str()).GetParent(&parent) != B_OK)
    return {};
  return std::string(parent.Path()) + "/plugins";
}
