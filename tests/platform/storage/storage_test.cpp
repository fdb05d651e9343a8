#include "platform/storage/directory.h"
#include "platform/storage/file.h"
#include "platform/storage/find_directory.h"
#include "platform/storage/node_info.h"
#include "platform/storage/resources.h"
#include "tests/support/scratch_folder.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

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

TEST(Path, KnowsParentAndLeaf) {
  BPath path("/a/b.c");
  EXPECT_STREQ(path.Leaf(), "b.c");
  BPath parent;
  EXPECT_EQ(path.GetParent(&parent), B_OK);
  EXPECT_STREQ(parent.Path(), "/a");
  EXPECT_EQ(parent.GetParent(&parent), B_OK);
  EXPECT_STREQ(parent.Path(), "/");
  EXPECT_EQ(parent.GetParent(&parent), B_ENTRY_NOT_FOUND);
  EXPECT_EQ(path.Append("/absolute"), B_BAD_VALUE);
}

TEST(Directory, IteratesInByteOrder) {
  const ScratchFolder folder;
  for (const char* name : {"b", "a", "B"}) folder.Write(name, "");
  BDirectory directory(folder.Path().c_str());
  BEntry entry;
  std::vector<std::string> names;
  while (directory.GetNextEntry(&entry) == B_OK) names.push_back(entry.Name());
  EXPECT_THAT(names, ElementsAre("B", "a", "b"));
  EXPECT_EQ(BDirectory("/nowhere").InitCheck(), B_ENTRY_NOT_FOUND);
  EXPECT_EQ(create_directory(folder.File("x/y/z").c_str(), 0777), B_OK);
  EXPECT_EQ(create_directory(folder.File("a/b").c_str(), 0777), B_NOT_A_DIRECTORY);
}

TEST(NodeInfo, StoresTheType) {
  const ScratchFolder folder;
  BFile file(folder.Write("a", "x").c_str(), B_READ_WRITE);
  BNodeInfo info(&file);
  std::string type;
  EXPECT_NE(info.GetType(&type), B_OK);
  if (info.SetType("text/plain") != B_OK) GTEST_SKIP() << "this file system has no attributes";
  EXPECT_EQ(info.GetType(&type), B_OK);
  EXPECT_EQ(type, "text/plain");
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

TEST(Resources, AreFoundByTypeWithIdOrName) {
  const compiled_resource table[] = {{B_STRING_TYPE, 3000, "one", "abc", 3}, {B_RAW_TYPE, 3000, "two", "de", 2}};
  const BResources resources(table, 2);
  size_t size = 0;
  EXPECT_NE(resources.LoadResource(B_RAW_TYPE, int32{3000}, &size), nullptr);
  EXPECT_EQ(size, 2U);
  EXPECT_EQ(resources.LoadResource(B_RAW_TYPE, "one", &size), nullptr);
  EXPECT_NE(resources.LoadResource(B_STRING_TYPE, "one", &size), nullptr);
}
