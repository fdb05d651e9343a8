#include "player/plugin_loader.h"

#include "tests/scratch_folder.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

using testing::ElementsAre;
using testing::StartsWith;

namespace {
bool is_any(const std::string&) {
  return true;
}
} // namespace

TEST(PluginLoader, SaysWhyEachBadImageIsLeftOutAndGoesOn) {
  ScratchFolder folder;
  for (const char* name : {"gen_empty.so", "gen_null.so", "gen_throwing.so"}) {
    std::filesystem::copy(std::string(BAD_PLUGINS) + "/" + name, folder.File(name));
  }
  folder.Write("gen_garbage.so", "this is no image");
  folder.Write("other.so", "not looked at");
  TPluginLoader loader;
  EXPECT_THAT(loader.LoadAll(folder.Path(), is_any),
              ElementsAre("Plug-in gen_empty.so is no plug-in: it has no NewPlugin",
                          StartsWith("Plug-in gen_garbage.so cannot be loaded: "),
                          "Plug-in gen_null.so gave no plug-in",
                          "Plug-in gen_throwing.so failed: no memory for lyrics"));
  EXPECT_EQ(loader.Count(), 0);
  EXPECT_THAT(loader.LoadAll(folder.Path(), [](const std::string& name) { return name == "gen_null.so"; }),
              ElementsAre("Plug-in gen_null.so gave no plug-in"));
  EXPECT_TRUE(loader.LoadAll("/no/such/folder", is_any).empty());
}

TEST(PluginLoader, OneThatFailsToStartOrToCleanUpTakesNothingDown) {
  ScratchFolder folder;
  std::filesystem::copy(std::string(BAD_PLUGINS) + "/gen_unwell.so", folder.File("gen_unwell.so"));
  TPluginLoader loader;
  EXPECT_THAT(loader.LoadAll(folder.Path(), is_any), ElementsAre("Plug-in gen_unwell.so failed: no window to show"));
  ASSERT_EQ(loader.Count(), 1);
  EXPECT_EQ(loader.Name(0), "gen_unwell.so") << "it has no texts of its own";
  EXPECT_EQ(loader.Info(0), "gen_unwell.so");
  loader.UnloadAll();
  EXPECT_EQ(loader.Count(), 0);
}
