/** The player's plug-ins: the editor comes with the first windows, the others later. */

#include "platform/app/message.h"
#include "platform/app/message_runner.h"
#include "platform/display/display_thread.h"
#include "player/app/program_icon.h"
#include "player/app/sonivo_app.h"
#include "player/model/player_messages.h"

#include <malloc.h>

#include <utility>

namespace {

constexpr const char* kEditorSignature = "application/x-vnd.KOREVA-VesmoEditor";
constexpr bigtime_t kLookUs = 500000;

bool is_editor(const std::string& name) {
  return name == "gen_VesmoE.so";
}

bool is_other(const std::string& name) {
  return !is_editor(name);
}

} // namespace

void TSonivoApp::LoadPlugins(const TPluginLoader::TWanted& wanted) {
  std::string fault;
  fPlugins.Load(plugin_folder(&fault), wanted);
  if (!fault.empty()) TellFault(fault);
  LookAfterPlugins();
}

void TSonivoApp::LoadEditor() {
  LoadPlugins(is_editor);
}

/** Those that nobody waits for, as nobody does for the bus. */
void TSonivoApp::LoadOtherPlugins() {
  fStarter.reset();
  LoadPlugins(is_other);
  fBus.Start();
  show_program_icon();
  // What only the start needed goes back to the system.
  display::post([] { malloc_trim(0); });
}

/** After each answer, and now and then while one is awaited. */
void TSonivoApp::LookAfterPlugins() {
  std::string faults; // shown together: each names another plug-in
  for (const std::string& fault : fPlugins.Proceed()) faults += (faults.empty() ? "" : "\n") + fault;
  if (!faults.empty()) TellFault(faults);
  if (std::vector<TPluginTexts> texts = PluginTexts(); texts != fState.plugins) {
    fState.plugins = std::move(texts);
    StateChanged();
  }
  WatchPlugins();
  if (!fPlugins.IsLoading()) {
    for (const std::string& path : std::exchange(fAwaitedLyrics, {})) ShowLyrics(path);
  }
  if (fPlugins.HasEnded()) EndAfterPlugins();
}

std::vector<TPluginTexts> TSonivoApp::PluginTexts() const {
  std::vector<TPluginTexts> texts;
  texts.reserve(static_cast<size_t>(fPlugins.Count()));
  for (int i = 0; i < fPlugins.Count(); ++i) texts.push_back({fPlugins.Name(i), fPlugins.Info(i)});
  return texts;
}

/** An answer that never comes is noticed by the clock alone. */
void TSonivoApp::WatchPlugins() {
  if (!fPlugins.IsBusy()) return fPluginWatch.reset();
  if (fPluginWatch) return;
  const BMessage look(kMsgLookAtPlugins);
  fPluginWatch = std::make_unique<BMessageRunner>(BMessenger(this), &look, kLookUs);
}

/** Handed to the editor when it is there. */
void TSonivoApp::ShowLyrics(const std::string& path) {
  if (fPlugins.IsLoading()) return fAwaitedLyrics.push_back(path);
  entry_ref ref;
  if (path.empty() || get_ref_for_path(path.c_str(), &ref) != B_OK) return;
  BMessage open(B_REFS_RECEIVED);
  open.AddRef("refs", &ref);
  BMessenger(kEditorSignature).SendMessage(&open, BMessenger(), 0);
}

bool TSonivoApp::HandlePlugin(const BMessage& message) {
  if (message.what == kMsgLookAtPlugins) {
    LookAfterPlugins();
    return true;
  }
  const bool isForPlugin =
      message.what == kMsgShowPlugin || message.what == kMsgPluginPrefs || message.what == kMsgAboutPlugin;
  int32 index = -1;
  if (!isForPlugin || message.FindInt32("index", &index) != B_OK || index < 0 || index >= fPlugins.Count())
    return isForPlugin;
  if (message.what == kMsgShowPlugin) fPlugins.Make(index, TPluginCall::kShow);
  if (message.what == kMsgPluginPrefs) fPlugins.Make(index, TPluginCall::kPrefs);
  if (message.what == kMsgAboutPlugin) fPlugins.Make(index, TPluginCall::kAbout);
  WatchPlugins();
  return true;
}
