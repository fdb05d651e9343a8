#pragma once

#include "interapp/inter_app_prefs.h"
#include "language/builtin_texts.h"
#include "language/llt.h"
#include "platform/app/message.h"
#include "platform/kernel/threads.h"
#include "plugin/exit_state.h"
#include "plugin/pref.h"
#include "tests/hostlink/strange_host.h"
#include "tests/support/scratch_folder.h"

#include <gtest/gtest.h>

#include <utility>

/** Environment of an editor: fresh settings, English texts and a fake player. */
class EditorWorld : public testing::Test {
protected:
  EditorWorld() {
    setenv("XDG_CONFIG_HOME", fFolder.Path().c_str(), 1);
    gExitState = new TExitState;
    gExitState->fWindowFrame = {50, 50, 549, 349};
    gIAP = new TInterAppPrefs;
    gIAP->AddItem(new TIAPItemAccKeyFormat);
    gPref = new TPref;
    gLLT = new TLLT;
    const BResources resources = builtin_resources();
    gLLT->Load(&resources, kBuiltinTextsId);
    fHost = new StrangeHost;
    fHost->Run();
  }
  ~EditorWorld() override {
    if (fHost->Lock()) fHost->Quit();
    delete std::exchange(gExitState, nullptr);
    delete std::exchange(gIAP, nullptr);
    delete std::exchange(gPref, nullptr);
    delete std::exchange(gLLT, nullptr);
  }
  template <typename Change>
  static void SetPref(Change change) {
    TPrefValues values = *gPref->Values();
    change(&values);
    gPref->SetValues(values);
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
  ScratchFolder fFolder;
  StrangeHost* fHost;
};
