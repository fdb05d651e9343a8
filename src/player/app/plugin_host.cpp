#include "player/app/plugin_host.h"

#include "common/koreva.h"
#include "platform/storage/entry.h"
#include "player/app/player_events.h"
#include "player/list/requests.h"
#include "player/model/player_messages.h"
#include "player/model/song_address.h"

#include <utility>

namespace {

constexpr const char* kEditorSignature = "application/x-vnd.KOREVA-VesmoEditor";
constexpr bigtime_t kCheckUs = 500000;
/** For any call into a plug-in, which only posts messages; closing windows takes a second on a slow machine. */
constexpr bigtime_t kTimeoutUs = 10000000;

bool is_editor(const std::string& name) {
  return name == "gen_VesmoE.so";
}

bool is_other(const std::string& name) {
  return !is_editor(name);
}

} // namespace

TPluginHost::TPluginHost(const BMessenger& player, TPlayerEvents* events)
    : fEvents(events), fLoader([player] { ask(player, kMsgLookAtPlugins); }, kTimeoutUs), fAnswerTimer(player) {}

void TPluginHost::LoadEditor() {
  Load(is_editor);
}

void TPluginHost::LoadOthers() {
  Load(is_other);
}

void TPluginHost::Load(const TPluginLoader::TWanted& wanted) {
  std::string error;
  fLoader.Load(plugin_folder(&error), wanted);
  if (!error.empty()) fEvents->ErrorOccurred(error);
  Proceed();
}

void TPluginHost::Proceed() {
  fThread.Check();
  std::string errors; // shown together: each names another plug-in
  for (const std::string& error : fLoader.Proceed()) errors += (errors.empty() ? "" : "\n") + error;
  if (!errors.empty()) fEvents->ErrorOccurred(errors);
  ReportTexts();
  WatchForAnswers();
  if (fLoader.IsLoading()) return;
  for (const std::string& path : std::exchange(fPendingLyrics, {})) ShowLyrics(path);
}

void TPluginHost::ReportTexts() {
  std::vector<TPluginTexts> texts;
  texts.reserve(static_cast<size_t>(fLoader.Count()));
  for (int i = 0; i < fLoader.Count(); ++i) texts.push_back({fLoader.Name(i), fLoader.Info(i)});
  if (texts == fTexts) return;
  fTexts = std::move(texts);
  fEvents->StateChanged();
}

/** A plug-in that hangs sends no answer: only a timer finds that out. */
void TPluginHost::WatchForAnswers() {
  if (!fLoader.IsBusy()) return fAnswerTimer.Stop();
  fAnswerTimer.KeepRunning(kMsgLookAtPlugins, kCheckUs);
}

void TPluginHost::ShowLyrics(const std::string& path) {
  if (fLoader.IsLoading()) return fPendingLyrics.push_back(path);
  entry_ref ref;
  if (path.empty() || get_ref_for_path(path.c_str(), &ref) != B_OK) return;
  BMessage open(B_REFS_RECEIVED);
  open.AddRef("refs", &ref);
  BMessenger(kEditorSignature).SendMessage(&open, BMessenger(), 0);
}

void TPluginHost::ShowLyricsOf(const std::string& song) {
  if (!is_file_path(song)) return;
  const std::string lrc = koreva::reext(song, "lrc");
  const std::string txt = koreva::reext(song, "txt");
  const bool isOnlyText = !BEntry(lrc.c_str()).Exists() && BEntry(txt.c_str()).Exists();
  ShowLyrics(isOnlyText ? txt : lrc);
}

bool TPluginHost::Handle(const BMessage& message) {
  fThread.Check();
  const bool isForPlugin =
      message.what == kMsgShowPlugin || message.what == kMsgPluginPrefs || message.what == kMsgAboutPlugin;
  int32 index = -1;
  if (!isForPlugin || message.FindInt32("index", &index) != B_OK || index < 0 || index >= fLoader.Count())
    return isForPlugin;
  if (message.what == kMsgShowPlugin) fLoader.Make(index, TPluginCall::kShow);
  if (message.what == kMsgPluginPrefs) fLoader.Make(index, TPluginCall::kPrefs);
  if (message.what == kMsgAboutPlugin) fLoader.Make(index, TPluginCall::kAbout);
  WatchForAnswers();
  return true;
}
