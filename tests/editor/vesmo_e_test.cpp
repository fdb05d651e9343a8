#include "tests/support/loaded_images.h"

namespace {

struct Plugin : LoadedImages {
  static std::unique_ptr<GeneralPlugin> Load() { return LoadedImages::Load(EDITOR_FILE); }
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
