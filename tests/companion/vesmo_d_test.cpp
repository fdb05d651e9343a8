#include "companion/display_state.h"
#include "platform/app/application.h"
#include "platform/app/message.h"
#include "platform/interface/window.h"
#include "platform/kernel/threads.h"
#include "platform/storage/entry.h"
#include "plugin/general_plugin.h"
#include "tests/display/hands.h"
#include "tests/scratch_folder.h"

#include <dlfcn.h>
#include <gtest/gtest.h>

#include <functional>
#include <memory>

namespace {

/** Both real images, loaded as the player loads them. */
class BothPlugins : public testing::Test {
protected:
  BothPlugins() {
    setenv("XDG_CONFIG_HOME", fFolder.Path().c_str(), 1);
    fApp = new BApplication("application/x-vnd.test-host");
    fApp->Run();
  }
  ~BothPlugins() override {
    fApp->Lock();
    fApp->Quit();
  }
  static std::unique_ptr<GeneralPlugin> Load(const char* file) {
    void* const image = dlopen(file, RTLD_NOW | RTLD_LOCAL);
    EXPECT_NE(image, nullptr) << dlerror();
    const auto construct = reinterpret_cast<GeneralPlugin* (*)(PluginConstructorStruct*)>(dlsym(image, "NewPlugin"));
    PluginConstructorStruct record;
    return std::unique_ptr<GeneralPlugin>(construct(&record));
  }
  static bool Soon(const std::function<bool()>& holds) {
    for (int i = 0; i < 20000; ++i) {
      if (holds()) return true;
      snooze(1000);
    }
    return false;
  }
  /** On the screen. */
  bool HasWindow(const std::string& title) {
    for (int32 i = 0; i < fApp->CountWindows(); ++i) {
      const BMessenger window = fApp->WindowAddresses()[static_cast<size_t>(i)];
      BLooper* looper = nullptr;
      if (!window.LockTarget()) continue;
      window.Target(&looper);
      const auto* const found = dynamic_cast<BWindow*>(looper);
      const bool isIt = found && !found->IsHidden() && found->Title() == title;
      looper->Unlock();
      if (isIt) return true;
    }
    return false;
  }
  TDisplayState Stored() const {
    TDisplayState state;
    state.Load(BEntry(fFolder.File("KOREVA/VesmoD/VesmoD_ExitStates.arc").c_str()));
    return state;
  }
  ScratchFolder fFolder;
  BApplication* fApp;
};

} // namespace

TEST_F(BothPlugins, TheEditorsPreferencesAreTheDisplaysWhicheverIsLoadedFirst) {
  for (const auto& [first, second] : {std::pair(EDITOR_FILE, DISPLAY_FILE), std::pair(DISPLAY_FILE, EDITOR_FILE)}) {
    auto a = Load(first);
    auto b = Load(second);
    GeneralPlugin* const editor = std::string_view(first) == EDITOR_FILE ? a.get() : b.get();
    EXPECT_STREQ(editor->fName, "Vesmo Editor");
    editor->Prefs(false);
    EXPECT_TRUE(Soon([&] { return HasWindow("Preferences of Vesmo"); })) << first << " first";
    for (auto* plugin : {&b, &a}) {
      (*plugin)->Cleanup();
      plugin->reset();
    }
    EXPECT_EQ(fApp->CountWindows(), 0);
  }
}

TEST_F(BothPlugins, TheDisplayOpensAgainWhenItWasOpenAtTheEnd) {
  auto display = Load(DISPLAY_FILE);
  EXPECT_STREQ(display->fName, "Vesmo Display");
  display->Init();
  display->Cleanup();
  display.reset();
  EXPECT_FALSE(Stored().fIsOpen) << "nobody has asked for it";
  display = Load(DISPLAY_FILE);
  display->Init();
  display->Init();
  EXPECT_TRUE(Soon([&] { return HasWindow("Vesmo Display"); }));
  display->Cleanup();
  display.reset();
  EXPECT_TRUE(Stored().fIsOpen);
  display = Load(DISPLAY_FILE);
  display->Init();
  EXPECT_TRUE(Soon([&] { return HasWindow("Vesmo Display"); }));
  display->Cleanup();
  display.reset();
  EXPECT_EQ(fApp->CountWindows(), 0);
}

TEST(DisplayImage, ExportsItsEntryAlone) {
  FILE* const names = popen("nm -D --defined-only " DISPLAY_FILE " | awk '{ print $3 }'", "r");
  ASSERT_NE(names, nullptr);
  std::string exported;
  char line[512];
  while (std::fgets(line, sizeof line, names)) exported += line;
  pclose(names);
  EXPECT_EQ(exported, "NewPlugin\n");
}
