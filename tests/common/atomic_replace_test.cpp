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

std::set<std::string> names_in(const std::string& folder) {
  std::set<std::string> names;
  for (const auto& entry : std::filesystem::directory_iterator(folder)) names.insert(entry.path().filename());
  return names;
}

} // namespace

TEST(AtomicReplace, WritesThroughASymbolicLinkAndKeepsPermissionsAndAttributes) {
  const ScratchFolder folder;
  const std::string path = folder.Write("real.lrc", "old and longer");
  ASSERT_EQ(symlink("real.lrc", folder.File("link.lrc").c_str()), 0);
  chmod(path.c_str(), 0640);
  const bool hasAttributes = setxattr(path.c_str(), "user.mime_type", "text/x-mine", 11, 0) == 0;
  ASSERT_EQ(atomic_replace(folder.File("link.lrc"), "new"), B_OK);
  EXPECT_TRUE(std::filesystem::is_symlink(folder.File("link.lrc")));
  EXPECT_EQ(folder.Read("real.lrc"), "new");
  EXPECT_EQ(mode_of(path), 0640U);
  char type[32] = {};
  if (hasAttributes) {
    EXPECT_EQ(getxattr(path.c_str(), "user.mime_type", type, sizeof type), 11);
  }
  EXPECT_EQ(names_in(folder.Path()).size(), 2U) << "no other file is left";
}

TEST(AtomicReplace, TakesNamesAsLongAsNamesCanBe) {
  const ScratchFolder folder;
  setenv("XDG_CONFIG_HOME", folder.File("settings").c_str(), 1);
  std::string name = "x";
  while (name.size() < 248) name += "歌";
  const std::string path = folder.Write(name + ".lrc", "old");
  ASSERT_EQ(atomic_replace(path, "new"), B_OK);
  EXPECT_EQ(folder.Read(name + ".lrc"), "new");
  const std::string kept = keep_for_recovery(path, "precious");
  EXPECT_TRUE(kept.starts_with(folder.File("settings/KOREVA/VesmoE/")) && kept.ends_with("歌歌.lrc")) << kept;
  EXPECT_TRUE(file_holds(kept, "precious"));
  EXPECT_EQ(names_in(folder.Path()).size(), 2U) << "the file and the settings";
}

TEST(AtomicReplace, WritesAFileWhoseFolderTakesNoOther) {
  const ScratchFolder folder;
  const std::string path = folder.Write("a.lrc", "old");
  chmod(folder.Path().c_str(), 0555);
  if (access(folder.Path().c_str(), W_OK) == 0) GTEST_SKIP() << "every folder is open to root";
  const ScratchFolder settings;
  setenv("XDG_CONFIG_HOME", settings.Path().c_str(), 1);
  EXPECT_EQ(atomic_replace(path, "new"), B_OK);
  EXPECT_EQ(folder.Read("a.lrc"), "new");
  EXPECT_EQ(names_in(settings.File("KOREVA/VesmoE")).size(), 0U) << "what was put aside is taken away again";
}

TEST(AtomicReplace, LeavesTheOldFileWholeWhenItFails) {
  const ScratchFolder folder;
  EXPECT_NE(atomic_replace(folder.Path(), "x"), B_OK) << "a folder";
  EXPECT_NE(atomic_replace(folder.File("missing/a.lrc"), "x"), B_OK);
  EXPECT_NE(atomic_replace("/dev/null", "x"), B_OK);
  // A device that behaves like a full disk.
  EXPECT_FALSE(file_holds("/dev/full", ""));
}

TEST(AtomicReplace, WhatOthersHaveAtTheNameOfTheSafetyCopyIsLeftAlone) {
  const ScratchFolder folder;
  folder.Write("a.lrc", "old");
  std::filesystem::create_hard_link(folder.File("a.lrc"), folder.File("b.lrc"));
  folder.Write("precious", "precious");
  std::filesystem::create_symlink("precious", folder.File("a.lrc.before-save"));
  folder.Write("a.lrc.before-save.2", "the user's own");
  ASSERT_EQ(atomic_replace(folder.File("a.lrc"), "new"), B_OK);
  EXPECT_EQ(folder.Read("b.lrc"), "new");
  EXPECT_EQ(folder.Read("precious"), "precious");
  EXPECT_TRUE(std::filesystem::is_symlink(folder.File("a.lrc.before-save")));
  EXPECT_EQ(folder.Read("a.lrc.before-save.2"), "the user's own");
  EXPECT_EQ(names_in(folder.Path()).size(), 5U);

  std::filesystem::resize_file(folder.File("a.lrc"), 0);
  EXPECT_EQ(longer_safety_copy(folder.File("a.lrc")), folder.File("a.lrc.before-save.2")) << "no link is offered";
}

TEST(AtomicReplace, TheOnlyWholeCopySurvivesTheSaveAfterAKill) {
  const ScratchFolder folder;
  const std::string whole(5000, 'w');
  const std::string path = folder.Write("a.lrc", whole);
  std::filesystem::create_hard_link(path, folder.File("b.lrc"));
  in_a_process([&] {
    const rlimit limit{whole.size(), whole.size()}; // exceeding the limit kills the process
    setrlimit(RLIMIT_FSIZE, &limit);
    static_cast<void>(atomic_replace(path, std::string(9000, 'n')));
  });
  std::filesystem::resize_file(path, 100); // the partial write
  const std::string copy = folder.File("a.lrc.before-save");
  EXPECT_EQ(longer_safety_copy(path), copy);
  ASSERT_EQ(atomic_replace(path, "short"), B_OK);
  EXPECT_EQ(folder.Read("a.lrc.before-save"), whole);
  EXPECT_EQ(longer_safety_copy(path), copy);
  EXPECT_EQ(names_in(folder.Path()).size(), 3U);
  ASSERT_EQ(atomic_replace(path, whole), B_OK);
  EXPECT_EQ(longer_safety_copy(path), "") << "the file is whole again";
}

TEST(AtomicReplace, WhatKilledProcessesLeftIsRemovedAndNothingElse) {
  const ScratchFolder folder;
  const std::string gone = std::to_string(in_a_process([] {}));
  const std::string here = std::to_string(getpid());
  const std::set<std::string> kept{"a.lrc.saving-" + here + "-7", "a.lrc.saving-" + gone, "a.lrc.saving-" + gone + "-x",
                                   "b.lrc.saving-" + gone + "-1", "a.lrc." + gone + ".new"};
  for (const std::string& name : kept) folder.Write(name, "kept");
  const std::string link = "a.lrc.saving-" + gone + "-2";
  std::filesystem::create_symlink("a.lrc", folder.File(link));
  const std::string secondName = "a.lrc.saving-" + gone + "-3";
  std::filesystem::create_hard_link(folder.Write("b.lrc", "somebody's file"), folder.File(secondName));
  folder.Write("a.lrc.saving-" + gone + "-1", "left");
  folder.Write("s.arc." + gone + ".new", "left by an earlier version");
  ASSERT_EQ(atomic_replace(folder.File("a.lrc"), "new"), B_OK);
  ASSERT_EQ(atomic_replace(folder.File("s.arc"), "new"), B_OK);
  std::set<std::string> expected = kept;
  expected.insert({"a.lrc", "b.lrc", "s.arc", link, secondName});
  EXPECT_EQ(names_in(folder.Path()), expected);
}

TEST(SafetyCopy, OfAFileInAClosedFolderIsFoundAgainAndOnlyForThatFile) {
  const ScratchFolder folder;
  setenv("XDG_CONFIG_HOME", folder.File("settings").c_str(), 1);
  for (const char* name : {"closed", "other"}) std::filesystem::create_directory(folder.File(name));
  const std::string path = folder.Write("closed/a.lrc", "whole");
  std::filesystem::permissions(folder.File("closed"), std::filesystem::perms(0500));
  const std::string copy = make_safety_copy(path);
  std::filesystem::resize_file(path, 1); // the interrupted write
  EXPECT_EQ(std::filesystem::path(copy).parent_path(), folder.File("settings/KOREVA/VesmoE"));
  EXPECT_EQ(longer_safety_copy(path), copy);
  EXPECT_EQ(longer_safety_copy(folder.Write("other/a.lrc", "w")), "");
  std::filesystem::permissions(folder.File("closed"), std::filesystem::perms(0700));
}

TEST(SafetyCopy, RecoveryFilesNeverFollowALinkOrReplaceEachOther) {
  const ScratchFolder folder;
  setenv("XDG_CONFIG_HOME", folder.File("settings").c_str(), 1);
  const std::string first = keep_for_recovery("/x/a.lrc", "first");
  const std::string second = keep_for_recovery("/x/a.lrc", "second"); // usually within the same second
  EXPECT_NE(first, second);
  EXPECT_TRUE(file_holds(first, "first") && file_holds(second, "second"));
  EXPECT_EQ(mode_of(first), 0600U);
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
