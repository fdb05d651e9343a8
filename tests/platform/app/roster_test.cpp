#include "platform/app/roster.h"

#include "platform/app/signature_launcher.h"
#include "platform/storage/entry_ref.h"
#include "tests/support/testing.h"

#include <sys/wait.h>

#include <cerrno>

namespace {

/** A desktop whose document opener is a script. */
struct Launching : testing::Test {
  Launching() { setenv("PATH", (fFolder.Path() + ":" + fPath).c_str(), 1); }
  ~Launching() override { setenv("PATH", fPath.c_str(), 1); }
  status_t LaunchWith(const std::string& script) const {
    std::filesystem::permissions(fFolder.Write("xdg-open", "#!/bin/sh\n" + script), std::filesystem::perms::owner_all);
    entry_ref document;
    EXPECT_EQ(get_ref_for_path(fFolder.File("document").c_str(), &document), B_OK);
    return be_roster->Launch(&document);
  }
  ScratchFolder fFolder;

private:
  const std::string fPath = getenv("PATH");
};

/** A desktop on which one program is installed, a script. */
struct LaunchingBySignature : testing::Test {
  LaunchingBySignature() { setenv("XDG_DATA_HOME", fFolder.Path().c_str(), 1); }
  ~LaunchingBySignature() override { setenv("XDG_DATA_HOME", fDataHome.c_str(), 1); }

  void Install(const std::string& signature, const std::string& script) const {
    const std::string program = fFolder.Write("a player", "#!/bin/sh\necho \"$#\" >>\"$0.runs\"\n" + script);
    std::filesystem::permissions(program, std::filesystem::perms::owner_all);
    std::filesystem::create_directory(fFolder.File("applications"));
    fFolder.Write("applications/player.desktop", "[Desktop Entry]\nType=Application\nExec=\"" + program +
                                                     "\" %F\nX-KOREVA-Signature=" + signature + "\n");
  }
  /** One line per run: the number of arguments. */
  std::string Runs() const { return fFolder.Read("a player.runs"); }
  ScratchFolder fFolder;

private:
  const std::string fDataHome = getenv("XDG_DATA_HOME");
};

bool has_no_children() {
  siginfo_t child{};
  return waitid(P_ALL, 0, &child, WEXITED | WNOHANG | WNOWAIT) != 0 && errno == ECHILD;
}

} // namespace

TEST_F(Launching, ReportsWhetherTheDocumentWasOpenedWithoutWaitingForTheEnd) {
  EXPECT_EQ(LaunchWith("exit 0\n"), B_OK);
  EXPECT_EQ(LaunchWith("exit 3\n"), B_LAUNCH_FAILED);
  EXPECT_EQ(LaunchWith("while [ -e \"$0\" ]; do sleep 0.1; done\n"), B_OK); // ends with its folder
}

TEST_F(LaunchingBySignature, StartsTheInstalledProgramOnceForRepeatedRequests) {
  constexpr const char* kSignature = "application/x-vnd.test-installed";
  EXPECT_EQ(be_roster->Launch("application/x-vnd.test-not-installed"), B_LAUNCH_FAILED);
  Install(kSignature, "exit 3\n");
  EXPECT_EQ(be_roster->Launch(kSignature), B_OK);
  EXPECT_EQ(be_roster->Launch(kSignature), B_ALREADY_RUNNING);
  EXPECT_TRUE(eventually([this] { return !Runs().empty(); }));
  EXPECT_TRUE(eventually(has_no_children)) << "a zombie is left";
  EXPECT_EQ(be_roster->Launch(kSignature), B_ALREADY_RUNNING);
  EXPECT_EQ(Runs(), "0\n");
}

TEST_F(LaunchingBySignature, TriesAgainAfterAWhileUnlessTheProgramStillRuns) {
  using std::chrono::seconds;
  SignatureLauncher launcher;
  const SignatureLauncher::Clock::time_point start{};
  EXPECT_EQ(launcher.Launch("a/b", start), B_LAUNCH_FAILED);
  Install("a/b", "while [ -e \"$0.stays\" ]; do sleep 0.1; done\n");
  const std::string stays = fFolder.Write("a player.stays", "");
  EXPECT_EQ(launcher.Launch("a/b", start + seconds(9)), B_LAUNCH_FAILED); // from memory, without searching the disk
  EXPECT_EQ(launcher.Launch("a/b", start + seconds(10)), B_OK);
  EXPECT_EQ(launcher.Launch("a/b", start + seconds(60)), B_ALREADY_RUNNING);
  std::filesystem::remove(stays);
  EXPECT_TRUE(eventually(has_no_children));
  EXPECT_TRUE(eventually([&] { return launcher.Launch("a/b", start + seconds(60)) == B_OK; }));
  EXPECT_TRUE(eventually(has_no_children));
  EXPECT_EQ(Runs(), "0\n0\n");
}
