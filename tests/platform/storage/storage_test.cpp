#include "platform/storage/directory.h"
#include "platform/storage/file.h"
#include "platform/storage/find_directory.h"
#include "tests/support/testing.h"

using testing::ElementsAre;

TEST(Paths, AreSplitAndJoined) {
  entry_ref ref;
  for (const auto& [path, whole] :
       {std::pair{"/a/b.lrc", "/a/b.lrc"}, {"/a", "/a"}, {"/a/../b/", "/b"}, {"/a/b/", "/a/b"}, {"/", "/."}}) {
    ASSERT_EQ(get_ref_for_path(path, &ref), B_OK);
    EXPECT_EQ(ref.FullPath(), whole);
  }
  EXPECT_EQ(get_ref_for_path("", &ref), B_BAD_VALUE);
  EXPECT_EQ(entry_ref().FullPath(), "");
  BPath path("/a", "b");
  EXPECT_EQ(path.GetParent(&path), B_OK);
  EXPECT_STREQ(path.Path(), "/a");
  EXPECT_STREQ(path.Leaf(), "a");
  for (const char* leaf : {"", "/b"}) EXPECT_EQ(path.Append(leaf), B_BAD_VALUE);
  EXPECT_EQ(path.SetTo(""), B_BAD_VALUE);
  EXPECT_EQ(path.Append("b"), B_NO_INIT) << "nothing is left of it";
  EXPECT_EQ(path.GetParent(&path), B_ENTRY_NOT_FOUND);
}

TEST(File, IsClosedWhenAnotherIsNotFound) {
  const ScratchFolder folder;
  const BDirectory directory(folder.Path().c_str()), missing(folder.File("none").c_str());
  BFile file(folder.Write("a", "text").c_str(), B_READ_ONLY);
  EXPECT_TRUE(file.IsRegular());
  EXPECT_EQ(file.SetTo(&directory, "a", B_READ_ONLY), B_OK);
  EXPECT_NE(file.SetTo(&missing, "a", B_READ_ONLY), B_OK);
  EXPECT_FALSE(file.IsRegular());
  EXPECT_EQ(file.SetTo(static_cast<const BEntry*>(nullptr), B_READ_ONLY), B_BAD_VALUE);
  EXPECT_EQ(create_directory("", 0777), B_BAD_VALUE);
  EXPECT_EQ(create_directory(folder.File("a").c_str(), 0777), B_NOT_A_DIRECTORY);
}

TEST(FindDirectory, UsesOnlyAnAbsoluteSettingsFolder) {
  BPath path;
  setenv("HOME", "/home/someone", 1);
  for (const auto& [variable, folder] : {std::pair{"relative", "/home/someone/.config"}, {"/settings", "/settings"}}) {
    setenv("XDG_CONFIG_HOME", variable, 1);
    EXPECT_EQ(find_directory(B_USER_SETTINGS_DIRECTORY, &path), B_OK);
    EXPECT_STREQ(path.Path(), folder);
  }
}
