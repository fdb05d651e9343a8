#include "family/language_watch.h"

#include "language/load_language.h"
#include "platform/app/message.h"
#include "platform/app/node_monitor.h"
#include "tests/support/hands.h"
#include "tests/support/own_looper.h"
#include "tests/support/plugin_globals.h"
#include "tests/support/testing.h"

#include <fcntl.h>
#include <sys/xattr.h>

namespace {

std::string language_file(const std::string& fileText) {
  return "[Informations]\nHeader = LLT File Format 100\nLanguage = Test\n[Data]\nMenu_File = " + fileText + "\n";
}

/** Like the managers: checks for a change at every notice, and reloads. */
struct Manager : BLooper {
  explicit Manager(std::string pluginPath) : BLooper("manager"), fPluginPath(std::move(pluginPath)) {
    AddHandler(&fWatch);
    set_node_monitor_language(fPluginPath, &fWatch);
  }
  ~Manager() override {
    stop_watching(&fWatch);
    RemoveHandler(&fWatch);
  }
  void MessageReceived(BMessage* message) override {
    if (message->what != 'note') return BLooper::MessageReceived(message);
    ++fNotices;
    if (!gAppPrivacy->ShouldBeLanguageChanged()) return;
    load_language(fPluginPath.c_str());
    set_node_monitor_language(fPluginPath, &fWatch);
    ++fReloads;
  }
  std::atomic<int> fNotices{0};
  std::atomic<int> fReloads{0};

private:
  const std::string fPluginPath;
  TNodeMonitorHandler fWatch{'note'};
};

struct LanguageWatch : testing::Test, PluginGlobals {
  LanguageWatch() {
    mkdir((fFolder.Path() + "/Language").c_str(), 0700);
    Write(language_file("File"));
    set_language_alert([](const char*, const char*, const char*) { ++gAlerts; });
    gAlerts = 0;
    load_language(PluginPath().c_str());
    fManager.reset(new Manager(PluginPath()));
    fManager->Run();
  }
  ~LanguageWatch() override {
    fManager.reset();
    set_language_alert(nullptr);
  }
  std::string PluginPath() const { return fFolder.Path() + "/gen_Test.so"; }
  std::string File() const { return fFolder.Path() + "/Language/English.llt"; }
  /** With a time of its own: what is written within one tick of the kernel's clock has the same one. */
  void Write(const std::string& text, const std::string& name = "English.llt") {
    const std::string path = fFolder.Write("Language/" + name, text);
    const timespec times[] = {{0, UTIME_OMIT}, {1700000000, ++fWrites}};
    utimensat(AT_FDCWD, path.c_str(), times, 0);
  }
  bool Shows(const std::string& text) const {
    return hands::until([&] { return gLLT->Text("Menu_File") == text; });
  }
  static inline std::atomic<int> gAlerts;
  OwnLooper<Manager> fManager;
  long fWrites = 0;
};
} // namespace

TEST_F(LanguageWatch, EditorsWaysToSaveCauseNoAlert) {
  Write(language_file("renamed"), "new");
  rename((fFolder.Path() + "/Language/new").c_str(), File().c_str());
  EXPECT_TRUE(Shows("renamed"));

  const std::string whole = language_file("in two writes");
  const int file = open(File().c_str(), O_WRONLY | O_TRUNC);
  ASSERT_EQ(write(file, whole.data(), 20), 20);
  snooze(5000); // meanwhile the file is incomplete
  ASSERT_GT(write(file, whole.data() + 20, whole.size() - 20), 0);
  close(file);
  EXPECT_TRUE(Shows("in two writes"));

  rename(File().c_str(), (File() + "~").c_str());
  Write(language_file("with a backup"));
  EXPECT_TRUE(Shows("with a backup"));
  EXPECT_EQ(gAlerts, 0);
}

TEST_F(LanguageWatch, ADeletedFileIsReportedAndReloadedWhenItComesBack) {
  unlink(File().c_str());
  EXPECT_TRUE(hands::until([] { return gAlerts > 0; }));
  EXPECT_TRUE(Shows("! ERROR !"));
  EXPECT_EQ(gAlerts, 1);
  Write(language_file("back"));
  EXPECT_TRUE(Shows("back"));
}

TEST_F(LanguageWatch, AWriteBetweenLoadingAndWatchingCausesAReload) {
  fManager.reset(); // without a watch
  Write(language_file("meanwhile"));
  fManager.reset(new Manager(PluginPath()));
  fManager->Run();
  EXPECT_TRUE(Shows("meanwhile"));
}

TEST_F(LanguageWatch, AttributesAndOtherFilesCauseNoReload) {
  if (setxattr(File().c_str(), "user.test", "1", 1, 0) != 0) GTEST_SKIP() << "no extended attributes here";
  fFolder.Write("Language/Other.llt", language_file("other"));
  EXPECT_TRUE(hands::until([this] { return fManager->fNotices > 0; }));
  EXPECT_EQ(fManager->fReloads, 0);
}
