#include "platform/storage/file.h"
#include "platform/storage/find_directory.h"
#include "tests/support/testing.h"

using testing::ElementsAre;

TEST(EntryRef, SplitsAndJoinsPaths) {
  entry_ref ref;
  for (const auto& [path, whole] : {std::pair{"/a/b.lrc", "/a/b.lrc"}, {"/a", "/a"}, {"/a/../b/", "/b"}}) {
    ASSERT_EQ(get_ref_for_path(path, &ref), B_OK);
    EXPECT_EQ(ref.FullPath(), whole);
  }
  EXPECT_EQ(get_ref_for_path("", &ref), B_BAD_VALUE);
  EXPECT_EQ(entry_ref().FullPath(), "");
}

TEST(FindDirectory, UsesOnlyAnAbsoluteSettingsFolder) {
  BPath path;
  setenv("XDG_CONFIG_HOME", "relative", 1);
  setenv("HOME", "/home/someone", 1);
  EXPECT_EQ(find_directory(B_USER_SETTINGS_DIRECTORY, &path), B_OK);
  EXPECT_STREQ(path.Path(), "/home/someone/.config");
  setenv("XDG_CONFIG_HOME", "/settings", 1);
  EXPECT_EQ(find_directory(B_USER_SETTINGS_DIRECTORY, &path), B_OK);
  EXPECT_STREQ(path.Path(), "/settings");
}
