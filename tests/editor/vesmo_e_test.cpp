#include "platform/interface/window.h"
#include "platform/storage/entry.h"
#include "plugin/exit_state.h"
#include "tests/support/hands.h"
#include "tests/support/loaded_images.h"

namespace {

struct Plugin : LoadedImages {
  static std::unique_ptr<GeneralPlugin> Load() { return LoadedImages::Load(EDITOR_FILE); }
  BRect StoredFrame() const {
    TExitState state;
    state.Load(BEntry(fFolder.File("KOREVA/VesmoE/VesmoE_ExitStates.arc").c_str()));
    return state.fWindowFrame;
  }
};

} // namespace

TEST_F(Plugin, HasItsNameAndAnswersQueries) {
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
  BWindow& window = hands::wait_for_window("Untitled - Vesmo Editor");
  ASSERT_TRUE(window.Lock());
  window.MoveTo(222, 111);
  window.Unlock();
  hands::wait_for_display(); // the status text of the opening is gone
  plugin->Cleanup();
  plugin.reset();
  EXPECT_EQ(StoredFrame().LeftTop(), (BPoint{222, 111})) << "recorded before it is written";
  EXPECT_FALSE(HasWindows());
  EXPECT_LT(fApp->CountLoopers(), loopers) << "the manager has ended too";
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
