#pragma once

#include "commands/key_bindings.h"
#include "language/builtin_texts.h"
#include "language/llt.h"
#include "plugin/app_privacy.h"
#include "plugin/exit_state.h"
#include "plugin/pref.h"
#include "tests/support/scratch_folder.h"

#include <cstdlib>
#include <utility>

/** What the parts of a plug-in share, for one test: settings in a folder of its own, defaults, and English texts. */
struct PluginGlobals {
  PluginGlobals() {
    setenv("XDG_CONFIG_HOME", fFolder.Path().c_str(), 1);
    setenv("XDG_STATE_HOME", fFolder.File("state").c_str(), 1);
    gExitState = new TExitState;
    gPref = new TPref;
    gKeyBindings = new TKeyBindings;
    gLLT = new TLLT;
    const BResources texts = builtin_resources();
    gLLT->Load(&texts, kBuiltinTextsId);
    gAppPrivacy = new TAppPrivacy;
  }
  PluginGlobals(const PluginGlobals&) = delete;
  PluginGlobals& operator=(const PluginGlobals&) = delete;
  ~PluginGlobals() {
    delete std::exchange(gAppPrivacy, nullptr);
    delete std::exchange(gLLT, nullptr);
    delete std::exchange(gKeyBindings, nullptr);
    delete std::exchange(gPref, nullptr);
    delete std::exchange(gExitState, nullptr);
  }

  template <typename Change>
  static void SetPref(Change change) {
    TPrefValues values = *gPref->Values();
    change(&values);
    gPref->SetValues(values);
  }

  const ScratchFolder fFolder;
};
