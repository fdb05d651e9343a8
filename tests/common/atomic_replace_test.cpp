#include "common/atomic_replace.h"

#include "common/safety_copy.h"
#include "tests/support/testing.h"

#include <sys/resource.h>
#include <sys/wait.h>
#include <sys/xattr.h>

namespace {

mode_t mode_of(const std::string& path) {
  struct stat info {};
  stat(path.c_str(), &info);
  return info.st_mode & 07777;
}

/** Runs `act` in a child process and waits for it; returns its id. */
template <typename Act>
pid_t in_a_process(Act act) {
  const pid_t child = fork();
  if (child == 0) {
    act();
    _exit(0);
  }
  waitpid(child, nullptr, 0);
  return child;
}

/** A folder, and in it the folder of the user's settings, which is made when it is needed. */
struct AtomicReplace : testing::Test {
  AtomicReplace() { setenv("XDG_CONFIG_HOME", fFolder.File("settings").c_str(), 1); }
  std::set<std::string> Names(const std::string& folder = ".") const {
    std::set<std::string> names;
    for (const auto& entry : std::filesystem::directory_iterator(fFolder.File(folder)))
      names.insert(entry.path().filename());
    return names;
  }
  const ScratchFolder fFolder;
};
using SafetyCopy = AtomicReplace;

} // namespace

TEST_F(AtomicReplace, WritesThroughASymbolicLinkAndKeepsPermissionsAndAttributes) {
  const std::string path = fFolder.Write("real.lrc", "old and longer");
  ASSERT_EQ(symlink("real.lrc", fFolder.File("link.lrc").c_str()), 0);
  chmod(path.c_str(), 0640);
  const bool hasAttributes = setxattr(path.c_str(), "user.mime_type", "text/x-mine", 11, 0) == 0;
  ASSERT_EQ(atomic_replace(fFolder.File("link.lrc"), "new"), B_OK);
  EXPECT_TRUE(std::filesystem::is_symlink(fFolder.File("link.lrc")));
  EXPECT_EQ(fFolder.Read("real.lrc"), "new");
  EXPECT_EQ(mode_of(path), 0640U);
  char type[32] = {};
  if (hasAttributes) {
    EXPECT_EQ(getxattr(path.c_str(), "user.mime_type", type, sizeof type), 11);
  }
  EXPECT_EQ(Names().size(), 2U) << "no other file is left";
}

TEST_F(AtomicReplace, TakesNamesAsLongAsNamesCanBe) {
  std::string name = "x";
  while (name.size() < 248) name += "歌";
  const std::string path = fFolder.Write(name + ".lrc", "old");
  ASSERT_EQ(atomic_replace(path, "new"), B_OK);
  EXPECT_EQ(fFolder.Read(name + ".lrc"), "new");
  const std::string kept = keep_for_recovery(path, "precious");
  EXPECT_TRUE(kept.starts_with(fFolder.File("settings/KOREVA/VesmoE/")) && kept.ends_with("歌歌.lrc")) << kept;
  EXPECT_TRUE(file_holds(kept, "precious"));
  EXPECT_EQ(Names().size(), 2U) << "the file and the settings";
}

TEST_F(AtomicReplace, WritesAFileWhoseFolderTakesNoOther) {
  std::filesystem::create_directory(fFolder.File("closed"));
  const std::string path = fFolder.Write("closed/a.lrc", "old");
  chmod(fFolder.File("closed").c_str(), 0555);
  if (access(fFolder.File("closed").c_str(), W_OK) == 0) GTEST_SKIP() << "every folder is open to root";
  EXPECT_EQ(atomic_replace(path, "new"), B_OK);
  EXPECT_EQ(fFolder.Read("closed/a.lrc"), "new");
  EXPECT_EQ(Names("settings/KOREVA/VesmoE").size(), 0U) << "what was put aside is taken away again";
  chmod(path.c_str(), 0444);
  EXPECT_EQ(atomic_replace(path, "newer"), B_PERMISSION_DENIED) << "a file that is not to be changed";
}

TEST_F(AtomicReplace, FailsOnWhatIsNoFileAndOnAFullDisk) {
  ASSERT_EQ(mkfifo(fFolder.File("pipe").c_str(), 0600), 0);
  EXPECT_EQ(atomic_replace(fFolder.Path(), "x"), B_IS_A_DIRECTORY);
  EXPECT_EQ(atomic_replace(fFolder.File("pipe"), "x"), B_BAD_VALUE);
  EXPECT_EQ(atomic_replace(fFolder.File("missing/a.lrc"), "x"), B_ENTRY_NOT_FOUND);
  EXPECT_TRUE(std::filesystem::is_fifo(fFolder.File("pipe")));
  // A device that behaves like a full disk.
  EXPECT_FALSE(file_holds("/dev/full", ""));
}

TEST_F(AtomicReplace, WhatOthersHaveAtTheNameOfTheSafetyCopyIsLeftAlone) {
  fFolder.Write("a.lrc", "old");
  std::filesystem::create_hard_link(fFolder.File("a.lrc"), fFolder.File("b.lrc"));
  fFolder.Write("precious", "precious");
  std::filesystem::create_symlink("precious", fFolder.File("a.lrc.before-save"));
  fFolder.Write("a.lrc.before-save.2", "the user's own");
  ASSERT_EQ(atomic_replace(fFolder.File("a.lrc"), "new"), B_OK);
  EXPECT_EQ(fFolder.Read("b.lrc"), "new");
  EXPECT_EQ(fFolder.Read("precious"), "precious");
  EXPECT_TRUE(std::filesystem::is_symlink(fFolder.File("a.lrc.before-save")));
  EXPECT_EQ(fFolder.Read("a.lrc.before-save.2"), "the user's own");
  EXPECT_EQ(Names().size(), 5U);

  std::filesystem::resize_file(fFolder.File("a.lrc"), 0);
  EXPECT_EQ(longer_safety_copy(fFolder.File("a.lrc")), fFolder.File("a.lrc.before-save.2")) << "no link is offered";
}

TEST_F(AtomicReplace, TheOnlyWholeCopySurvivesTheSaveAfterAKill) {
  const std::string whole(5000, 'w');
  const std::string path = fFolder.Write("a.lrc", whole);
  std::filesystem::create_hard_link(path, fFolder.File("b.lrc"));
  in_a_process([&] {
    const rlimit limit{whole.size(), whole.size()}; // exceeding the limit kills the process
    setrlimit(RLIMIT_FSIZE, &limit);
    static_cast<void>(atomic_replace(path, std::string(9000, 'n')));
  });
  std::filesystem::resize_file(path, 100); // the partial write
  const std::string copy = fFolder.File("a.lrc.before-save");
  EXPECT_EQ(longer_safety_copy(path), copy);
  ASSERT_EQ(atomic_replace(path, "short"), B_OK);
  EXPECT_EQ(fFolder.Read("a.lrc.before-save"), whole);
  EXPECT_EQ(longer_safety_copy(path), copy);
  EXPECT_EQ(Names().size(), 4U) << "both names, the copy and the settings";
  ASSERT_EQ(atomic_replace(path, whole), B_OK);
  EXPECT_EQ(longer_safety_copy(path), "") << "the file is whole again";
}

TEST_F(AtomicReplace, WhatKilledProcessesLeftIsRemovedAndNothingElse) {
  const std::string gone = std::to_string(in_a_process([] {}));
  const std::string here = std::to_string(getpid());
  const std::set<std::string> kept{"a.lrc.saving-" + here + "-7", "a.lrc.saving-" + gone, "a.lrc.saving-" + gone + "-x",
                                   "b.lrc.saving-" + gone + "-1", "a.lrc." + gone + ".new"};
  for (const std::string& name : kept) fFolder.Write(name, "kept");
  const std::string link = "a.lrc.saving-" + gone + "-2";
  std::filesystem::create_symlink("a.lrc", fFolder.File(link));
  const std::string secondName = "a.lrc.saving-" + gone + "-3";
  std::filesystem::create_hard_link(fFolder.Write("b.lrc", "somebody's file"), fFolder.File(secondName));
  fFolder.Write("a.lrc.saving-" + gone + "-1", "left");
  fFolder.Write("s.arc." + gone + ".new", "left by an earlier version");
  ASSERT_EQ(atomic_replace(fFolder.File("a.lrc"), "new"), B_OK);
  ASSERT_EQ(atomic_replace(fFolder.File("s.arc"), "new"), B_OK);
  std::set<std::string> expected = kept;
  expected.insert({"a.lrc", "b.lrc", "s.arc", link, secondName});
  EXPECT_EQ(Names(), expected);
}

TEST_F(SafetyCopy, OfAFileInAClosedFolderIsFoundAgainAndOnlyForThatFile) {
  for (const char* name : {"closed", "other"}) std::filesystem::create_directory(fFolder.File(name));
  const std::string path = fFolder.Write("closed/a.lrc", "whole");
  std::filesystem::permissions(fFolder.File("closed"), std::filesystem::perms(0500));
  const std::string copy = make_safety_copy(path);
  std::filesystem::resize_file(path, 1); // the interrupted write
  EXPECT_EQ(std::filesystem::path(copy).parent_path(), fFolder.File("settings/KOREVA/VesmoE"));
  EXPECT_EQ(longer_safety_copy(path), copy);
  EXPECT_EQ(longer_safety_copy(fFolder.Write("other/a.lrc", "w")), "");
  std::filesystem::permissions(fFolder.File("closed"), std::filesystem::perms(0700));
}

TEST_F(SafetyCopy, RecoveryFilesNeverFollowALinkOrReplaceEachOther) {
  const std::string first = keep_for_recovery("/x/a.lrc", "first");
  const std::string second = keep_for_recovery("/x/a.lrc", "second"); // usually within the same second
  EXPECT_NE(first, second);
  EXPECT_TRUE(file_holds(first, "first") && file_holds(second, "second"));
  EXPECT_EQ(mode_of(first), 0600U);
}

TEST_F(AtomicReplace, FileHoldsComparesEveryByte) {
  const std::string large(200000, 'x');
  const std::string path = fFolder.Write("a", large);
  EXPECT_TRUE(file_holds(path, large));
  EXPECT_FALSE(file_holds(path, large + "x"));
  EXPECT_FALSE(file_holds(path, std::string(199999, 'x') + "y"));
  EXPECT_FALSE(file_holds(fFolder.File("missing"), ""));
}
