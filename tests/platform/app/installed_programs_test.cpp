#include "platform/app/installed_programs.h"

#include "tests/support/testing.h"

namespace fs = std::filesystem;
using namespace testing;

namespace {

std::string entry(const std::string& exec) {
  return "[Desktop Entry]\nType=Application\nExec=" + exec + "\nX-KOREVA-Signature=a/b\n";
}

/** Two folders of desktop entries, the user's and the system's. */
struct InstalledPrograms : testing::Test {
  std::vector<std::string> Command() const {
    return command_of("a/b", {fOwn.Path(), fOwn.File("none"), fSystem.Path()});
  }
  ScratchFolder fOwn, fSystem;
};

} // namespace

TEST_F(InstalledPrograms, AreFoundByTheSignatureInTheirEntry) {
  fSystem.Write("editor.desktop", "[Desktop Entry]\nType=Application\nExec=editor\n");
  fSystem.Write("player.desktop.old", entry("old"));
  EXPECT_THAT(Command(), IsEmpty());
  fSystem.Write("player.desktop", entry("player %F"));
  EXPECT_THAT(Command(), ElementsAre("player"));
  EXPECT_THAT(command_of("", {fSystem.Path()}), IsEmpty());
}

TEST_F(InstalledPrograms, TheUsersOwnEntryHidesTheSystems) {
  fSystem.Write("player.desktop", entry("player"));
  fOwn.Write("player.desktop", entry("mine"));
  EXPECT_THAT(Command(), ElementsAre("mine"));
  fOwn.Write("player.desktop", "[Desktop Entry]\nHidden=true\n");
  EXPECT_THAT(Command(), IsEmpty());
}

TEST_F(InstalledPrograms, AreReadOnlyFromBoundedRegularFilesThatOthersCannotWrite) {
  mkfifo(fOwn.File("a.desktop").c_str(), 0600);
  fs::create_directory(fOwn.File("b.desktop"));
  fs::create_symlink(fOwn.File("nothing"), fOwn.File("c.desktop"));
  fs::create_symlink("/dev/zero", fOwn.File("d.desktop"));
  fOwn.Write("e.desktop", entry("huge") + std::string(300000, '#'));
  fs::permissions(fOwn.Write("f.desktop", entry("foreign")), fs::perms::others_write, fs::perm_options::add);
  EXPECT_THAT(Command(), IsEmpty());
  // Some package systems install links.
  fs::create_symlink(fSystem.Write("package", entry("linked")), fOwn.File("g.desktop"));
  EXPECT_THAT(Command(), ElementsAre("linked"));
}

TEST_F(InstalledPrograms, AreSearchedInTheFoldersOfTheDesktop) {
  std::map<std::string, std::string> before;
  for (const auto& [name, value] :
       {std::pair{"HOME", "/home/me"}, {"XDG_DATA_HOME", "/mine"}, {"XDG_DATA_DIRS", "/one:relative::/two/"}}) {
    before[name] = getenv(name) ? getenv(name) : "";
    setenv(name, value, 1);
  }
  EXPECT_THAT(application_folders(), ElementsAre("/mine/applications", "/one/applications", "/two//applications"));
  setenv("XDG_DATA_HOME", "relative", 1);
  unsetenv("XDG_DATA_DIRS");
  EXPECT_THAT(application_folders(), ElementsAre("/home/me/.local/share/applications", "/usr/local/share/applications",
                                                 "/usr/share/applications"));
  for (const auto& [name, value] : before) setenv(name.c_str(), value.c_str(), 1);
}

TEST(Sonivo, IsInstalledUnderTheSignatureOfItsFrontEnds) {
  const std::vector<std::string> folders{SOURCE_FOLDER "/packaging"};
  EXPECT_THAT(command_of("application/x-vnd.Marvik-Sonivo", folders), ElementsAre("sonivo"));
}
