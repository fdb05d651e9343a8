#include "family/language_watch.h"

#include "language/load_language.h"
#include "platform/app/looper.h"
#include "platform/app/message.h"
#include "platform/app/node_monitor.h"
#include "plugin/app_privacy.h"
#include "plugin/pref.h"

namespace {

constexpr uint32 kEverything = B_WATCH_NAME | B_WATCH_STAT | B_WATCH_ATTR | B_WATCH_DIRECTORY;

void report_missed_change(BHandler* handler) {
  BMessage notice(B_NODE_MONITOR);
  notice.AddInt32("opcode", B_STAT_CHANGED);
  // Without waiting, since this may be the thread that empties the queue.
  BMessenger(handler).SendMessage(&notice, BMessenger(), 0);
}

} // namespace

void TNodeMonitorHandler::MessageReceived(BMessage* message) {
  if (message->what != B_NODE_MONITOR) return BHandler::MessageReceived(message);
  int32 opcode = 0;
  if (message->FindInt32("opcode", &opcode) == B_OK && opcode == B_ATTR_CHANGED) return;
  BMessage notice(*message);
  notice.what = fCode;
  if (Looper()) Looper()->PostMessage(&notice);
}

void set_node_monitor_language(const std::string& pluginPath, BHandler* handler) {
  stop_watching(handler);
  watch_node(language_folder(pluginPath).c_str(), kEverything, handler);
  const std::string chosen = gPref->Values()->languageFile;
  if (!chosen.empty()) watch_node(chosen.c_str(), kEverything, handler);
  if (gAppPrivacy && gAppPrivacy->ShouldBeLanguageChanged()) report_missed_change(handler);
}
