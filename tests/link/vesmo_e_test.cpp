#include "interapp/inter_app_prefs.h"
#include "language/llt.h"
#include "platform/app/application.h"
#include "platform/app/message.h"
#include "platform/interface/window.h"
#include "platform/kernel/modifiers.h"
#include "platform/storage/entry.h"
#include "plugin/exit_state.h"
#include "plugin/general_plugin.h"
#include "plugin/pref.h"
#include "tests/display/hands.h"
#include "tests/scratch_folder.h"

#include <dlfcn.h>
#include <gtest/gtest.h>

#include <functional>

namespace {

/** The real image, loaded as the player loads it. */
class Plugin : public testing::Test {
protected:
  Plugin() {
    setenv("XDG_CONFIG_HOME", fFolder.Path().c_str(), 1);
    fApp = new BApplication("application/x-vnd.test-host");
    fApp->Run();
  }
  ~Plugin() override {
    fApp->Lock();
    fApp->Quit();
  }
  std::unique_ptr<GeneralPlugin> Load() {
    if (fImage == nullptr) fImage = dlopen(PLUGIN_FILE, RTLD_NOW | RTLD_LOCAL);
    EXPECT_NE(fImage, nullptr) << dlerror();
    const auto construct = reinterpret_cast<GeneralPlugin* (*)(PluginConstructorStruct*)>(dlsym(fImage, "NewPlugin"));
    PluginConstructorStruct record;
    std::unique_ptr<GeneralPlugin> plugin(construct(&record));
    EXPECT_EQ(record.built, 1);
    return plugin;
  }
  static bool Soon(const std::function<bool()>& holds) {
    for (int i = 0; i < 5000; ++i) {
      if (holds()) return true;
      snooze(1000);
    }
    return false;
  }
  BRect StoredFrame() const {
    TExitState state;
    state.Load(BEntry(fFolder.File("KOREVA/VesmoE/VesmoE_ExitStates.arc").c_str()));
    return state.fWindowFrame;
  }
  ScratchFolder fFolder;
  BApplication* fApp;
  void* fImage = nullptr;
};

} // namespace

TEST_F(Plugin, TellsWhoItIsAndAnswersQueries) {
  const auto plugin = Load();
  EXPECT_STREQ(plugin->fName, "Vesmo Editor");
  EXPECT_TRUE(std::string(plugin->fInfo).starts_with("Vesmo Editor  "));
  EXPECT_EQ(plugin->GetFlags(), 0U);
  EXPECT_TRUE(plugin->About(true));
  EXPECT_TRUE(plugin->Prefs(true));
  plugin->Cleanup();
}

TEST_F(Plugin, OpensItsWindowAndClosesIt) {
  auto plugin = Load();
  const int32 loopers = fApp->CountLoopers();
  EXPECT_TRUE(plugin->Init());
  ASSERT_TRUE(Soon([&] { return fApp->CountWindows() == 1; }));
  BWindow* const window = fApp->WindowAt(0);
  ASSERT_TRUE(window->Lock());
  window->MoveTo(222, 111);
  window->Unlock();
  hands::wait_for_display(); // what it tells of the opening is out of the way
  plugin->Cleanup();
  plugin.reset();
  EXPECT_EQ(StoredFrame().LeftTop(), (BPoint{222, 111})) << "recorded before it is written";
  EXPECT_EQ(fApp->CountWindows(), 0);
  EXPECT_LT(fApp->CountLoopers(), loopers) << "the manager has ended too";
  EXPECT_TRUE(std::filesystem::exists(fFolder.File("KOREVA/VesmoE/VesmoE_ExitStates.arc")));
}

TEST_F(Plugin, ComesAndGoesManyTimes) {
  const int32 loopers = fApp->CountLoopers();
  for (int i = 0; i < 40; ++i) {
    auto plugin = Load();
    plugin->Init();
    if (i % 2 == 0) plugin->Cleanup();
    plugin.reset();
    ASSERT_EQ(fApp->CountLoopers(), loopers) << "round " << i;
  }
}

TEST_F(Plugin, ShowsWhyThereAreNoPreferences) {
  auto plugin = Load();
  plugin->Prefs(false);
  const hands::Question question = hands::wait_for_question();
  EXPECT_EQ(question.caption, "Vesmo Editor");
  EXPECT_NE(question.text.find("VesmoD"), std::string::npos);
  EXPECT_TRUE(hands::answer_with_key("Return"));
  plugin.reset();
}

TEST_F(Plugin, FourModifiersLeaveTheStoredStateAlone) {
  report_modifiers(B_SHIFT_KEY | B_COMMAND_KEY | B_CONTROL_KEY | B_OPTION_KEY);
  Load().reset();
  report_modifiers(0);
  EXPECT_FALSE(std::filesystem::exists(fFolder.File("KOREVA/VesmoE/VesmoE_ExitStates.arc")));
}

TEST(PluginImage, ExportsItsEntryAlone) {
  FILE* const names = popen("nm -D --defined-only " PLUGIN_FILE " | awk '{ print $3 }'", "r");
  ASSERT_NE(names, nullptr);
  std::string exported;
  char line[512];
  while (std::fgets(line, sizeof line, names)) exported += line;
  pclose(names);
  EXPECT_EQ(exported, "NewPlugin\n");
}
