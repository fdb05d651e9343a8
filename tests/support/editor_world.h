#pragma once

#include "interapp/inter_app_prefs.h"
#include "tests/hostlink/strange_host.h"
#include "tests/support/plugin_globals.h"
#include "tests/support/testing.h"

/** Environment of an editor: fresh settings, English texts and a fake player. */
struct EditorWorld : testing::Test, PluginGlobals {
  EditorWorld() : fHost(new StrangeHost) {
    gExitState->fWindowFrame = {50, 50, 549, 349};
    gIAP = new TInterAppPrefs;
    gIAP->AddItem(new TIAPItemAccKeyFormat);
    gIAP->AddItem(new TIAPItemFlatToolBar);
    fHost->Run();
  }
  ~EditorWorld() override {
    if (fHost->Lock()) fHost->Quit();
    delete std::exchange(gIAP, nullptr);
  }
  /** Lets the player play there, and the editor know of it; `refresh` makes the editor ask once. A stamp that is taken
      after this is right, however late the machine lets the player answer. */
  template <typename Refresh>
  void PlayAt(int32 positionMs, const std::string& title, Refresh refresh) {
    fHost->SetRecord(positionMs, title);
    do {
      refresh();
      snooze(1000);
    } while (fHost->CountHeard() == 0);
    refresh();
  }
  StrangeHost* const fHost;
};
