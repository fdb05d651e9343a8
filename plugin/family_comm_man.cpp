#include "plugin/family_comm_man.h"

#include "language/language_watch.h"
#include "language/llt.h"
#include "language/load_language.h"
#include "platform/app/application.h"
#include "platform/app/node_monitor.h"
#include "platform/interface/display_language.h"
#include "plugin/app_privacy.h"

TFamilyCommMan::TFamilyCommMan(const char* name, const char* partnerName, std::string pluginPath)
    : TCommMan(name, partnerName), fPluginPath(std::move(pluginPath)), fIAPFilter(new TIAPFilter(BMessenger(this))),
      fLanguageWatch(std::make_unique<TNodeMonitorHandler>(kMsgLanguageNode)) {
  AddHandler(fLanguageWatch.get());
  if (be_app && be_app->Lock()) {
    be_app->AddCommonFilter(fIAPFilter);
    be_app->Unlock();
  }
}

TFamilyCommMan::~TFamilyCommMan() = default;

thread_id TFamilyCommMan::Run() {
  const thread_id thread = TCommMan::Run();
  set_node_monitor_language(fPluginPath, fLanguageWatch.get());
  return thread;
}

void TFamilyCommMan::EndWatches() {
  stop_watching(fLanguageWatch.get());
  if (be_app && be_app->Lock()) {
    if (be_app->RemoveCommonFilter(fIAPFilter)) delete fIAPFilter;
    be_app->Unlock();
  }
}

bool TFamilyCommMan::ReloadLanguage() {
  if (!gAppPrivacy->ShouldBeLanguageChanged()) return false;
  load_language(fPluginPath.c_str());
  set_display_language(gLLT->Text("Locale"));
  set_node_monitor_language(fPluginPath, fLanguageWatch.get()); // the chosen file may be another
  return true;
}
