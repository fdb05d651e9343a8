#include "lyrics/replace_file.h"

#include "tests/scratch_folder.h"

#include <gtest/gtest.h>
#include <sys/stat.h>
#include <sys/xattr.h>
#include <unistd.h>

namespace {

mode_t mode_of(const std::string& path) {
  struct stat info {};
  stat(path.c_str(), &info);
  return info.st_mode & 07777;
}

size_t files_in(const std::string& folder) {
  return static_cast<size_t>(std::distance(std::filesystem::directory_iterator(folder), {}));
}

} // namespace

TEST(ReplaceFile, WritesThroughASymbolicLinkAndKeepsPermissionsAndAttributes) {
  const ScratchFolder folder;
  const std::string path = folder.Write("real.lrc", "old and longer");
  ASSERT_EQ(symlink("real.lrc", folder.File("link.lrc").c_str()), 0);
  chmod(path.c_str(), 0640);
  const bool hasAttributes = setxattr(path.c_str(), "user.mime_type", "text/x-mine", 11, 0) == 0;
  ASSERT_EQ(replace_file(folder.File("link.lrc"), "new"), B_OK);
  EXPECT_TRUE(std::filesystem::is_symlink(folder.File("link.lrc")));
  EXPECT_EQ(folder.Read("real.lrc"), "new");
  EXPECT_EQ(mode_of(path), 0640U);
  char type[32] = {};
  if (hasAttributes) {
    EXPECT_EQ(getxattr(path.c_str(), "user.mime_type", type, sizeof type), 11);
  }
  EXPECT_EQ(files_in(folder.Path()), 2U) << "nothing is left beside them";
}

TEST(ReplaceFile, ShowsTheNewTextUnderEveryHardLink) {
  const ScratchFolder folder;
  folder.Write("a.lrc", "old");
  std::filesystem::create_hard_link(folder.File("a.lrc"), folder.File("b.lrc"));
  ASSERT_EQ(replace_file(folder.File("a.lrc"), "new"), B_OK);
  EXPECT_EQ(folder.Read("b.lrc"), "new");
  EXPECT_EQ(files_in(folder.Path()), 2U);
}

TEST(ReplaceFile, TakesNamesAsLongAsNamesCanBe) {
  const ScratchFolder folder;
  setenv("XDG_CONFIG_HOME", folder.File("settings").c_str(), 1);
  std::string name = "x";
  while (name.size() < 248) name += "歌";
  const std::string path = folder.Write(name + ".lrc", "old");
  ASSERT_EQ(replace_file(path, "new"), B_OK);
  EXPECT_EQ(folder.Read(name + ".lrc"), "new");
  const std::string kept = keep_for_recovery(path, "precious");
  EXPECT_TRUE(kept.starts_with(folder.File("settings/KOREVA/VesmoE/")) && kept.ends_with("歌歌.lrc")) << kept;
  EXPECT_TRUE(file_holds(kept, "precious"));
  EXPECT_EQ(files_in(folder.Path()), 2U) << "the file and the settings";
}

TEST(ReplaceFile, WritesAFileWhoseFolderTakesNoOther) {
  if (geteuid() == 0) GTEST_SKIP() << "every folder takes files of the superuser";
  const ScratchFolder folder;
  const std::string path = folder.Write("a.lrc", "old");
  chmod(folder.Path().c_str(), 0555);
  const ScratchFolder settings;
  setenv("XDG_CONFIG_HOME", settings.Path().c_str(), 1);
  EXPECT_EQ(replace_file(path, "new"), B_OK);
  EXPECT_EQ(folder.Read("a.lrc"), "new");
  EXPECT_EQ(files_in(settings.File("KOREVA/VesmoE")), 0U) << "what was put aside is taken away again";
}

TEST(ReplaceFile, LeavesTheOldFileWholeWhenItFails) {
  const ScratchFolder folder;
  EXPECT_NE(replace_file(folder.Path(), "x"), B_OK) << "a folder";
  EXPECT_NE(replace_file(folder.File("missing/a.lrc"), "x"), B_OK);
  EXPECT_NE(replace_file("/dev/null", "x"), B_OK);
  // A device that is always full stands for a disk that is.
  EXPECT_FALSE(file_holds("/dev/full", ""));
}

TEST(FileHolds, ComparesEveryByte) {
  const ScratchFolder folder;
  const std::string large(200000, 'x');
  const std::string path = folder.Write("a", large);
  EXPECT_TRUE(file_holds(path, large));
  EXPECT_FALSE(file_holds(path, large + "x"));
  EXPECT_FALSE(file_holds(path, std::string(199999, 'x') + "y"));
  EXPECT_FALSE(file_holds(folder.File("missing"), ""));
}
