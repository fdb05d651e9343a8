/** The player's plug-ins: the editor comes with the first windows, the others later. */

#include "platform/app/message.h"
#include "platform/app/message_runner.h"
#include "platform/display/display_thread.h"
#include "player/player_messages.h"
#include "player/program_icon.h"
#include "player/sonivo_app.h"
#include "plugin/general_plugin.h"

#include <malloc.h>

namespace {

bool is_editor(const std::string& name) {
  return name == "gen_VesmoE.so";
}

bool is_other(const std::string& name) {
  return !is_editor(name);
}

} // namespace

/** Returns what went wrong, shown together: each names another image. */
std::string TSonivoApp::LoadPlugins(const TPluginLoader::TWanted& wanted) {
  std::string faults;
  for (const std::string& fault : fPlugins.LoadAll(plugin_folder(), wanted))
    faults += (faults.empty() ? "" : "\n") + fault;
  fState.plugins.clear();
  for (int i = 0; i < fPlugins.Count(); ++i) fState.plugins.push_back({fPlugins.Name(i), fPlugins.Info(i)});
  return faults;
}

std::string TSonivoApp::LoadEditor() {
  return LoadPlugins(is_editor);
}

/** Those that nobody waits for, as nobody does for the bus. */
void TSonivoApp::LoadOtherPlugins() {
  fStarter.reset();
  const std::string faults = LoadPlugins(is_other);
  StateChanged();
  if (!faults.empty()) TellFault(faults);
  fBus.Start();
  show_program_icon();
  // What only the start needed goes back to the system.
  display::post([] { malloc_trim(0); });
}

bool TSonivoApp::HandlePlugin(const BMessage& message) {
  const bool isForPlugin =
      message.what == kMsgShowPlugin || message.what == kMsgPluginPrefs || message.what == kMsgAboutPlugin;
  int32 index = -1;
  if (!isForPlugin || message.FindInt32("index", &index) != B_OK || index < 0 || index >= fPlugins.Count())
    return isForPlugin;
  GeneralPlugin* const plugin = fPlugins.At(index);
  if (message.what == kMsgShowPlugin) plugin->Init();
  if (message.what == kMsgPluginPrefs) plugin->Prefs(false);
  if (message.what == kMsgAboutPlugin) plugin->About(false);
  return true;
}
