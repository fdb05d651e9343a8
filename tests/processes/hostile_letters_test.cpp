#include "family/family_comm_man.h"
#include "hostlink/host_protocol.h"
#include "platform/app/message.h"
#include "platform/interface/window.h"
#include "platform/kernel/threads.h"
#include "plugin/message_codes.h"
#include "tests/processes/peer.h"
#include "tests/support/eventually.h"
#include "tests/support/hands.h"
#include "tests/support/loaded_images.h"
#include "tests/support/long_tests.h"

#include <signal.h>
#include <spawn.h>
#include <sys/wait.h>
#include <unistd.h>

#include <algorithm>
#include <random>

extern char** environ;

namespace {

constexpr const char* kEditor = "application/x-vnd.KOREVA-VesmoEditor";

std::string attack_on(pid_t process, int count, const std::string& signatures) {
  const unsigned seed = std::random_device()();
  ::testing::Test::RecordProperty("seed", static_cast<int>(seed));
  return "letters " + std::to_string(count) + " " + std::to_string(seed) + " " + std::to_string(process) + " " +
         signatures;
}

/** Both images with all their windows, and unsaved lyrics. */
class AttackedWindows : public LoadedImages {
protected:
  AttackedWindows() {
    fEditor->Init();
    fEditorWindow = &hands::wait_for_window("Untitled - Vesmo Editor");
    hands::until([this] { return hands::is_active(*fEditorWindow); });
    hands::press(*fEditorWindow, "Ctrl+E");
    hands::until([this] { return Status().starts_with(" [Edit]"); });
    hands::press(*fEditorWindow, "x");
    hands::press(*fEditorWindow, "Ctrl+D");
    hands::until([this] { return Status().starts_with(" [Tag"); });
    EXPECT_TRUE(hands::until([this] { return FirstLine() == "x"; })) << FirstLine();
    for (int i = 0; i < 2; ++i) fDisplay->Init(); // the second time shows it
    hands::wait_for_window("Vesmo Display");
    fEditor->About(false);
    fDisplay->Prefs(false);
    hands::wait_for_window("About Vesmo Editor");
    hands::wait_for_window("Vesmo preferences");
  }
  ~AttackedWindows() override {
    for (auto* plugin : {&fDisplay, &fEditor}) {
      (*plugin)->Cleanup();
      plugin->reset();
    }
  }
  std::string Status() const { return hands::label_text(*fEditorWindow, "StatusBar"); }
  std::string FirstLine() const { return hands::row_text(*fEditorWindow, "TagInputView", 0); }
  std::unique_ptr<GeneralPlugin> fEditor = Load(EDITOR_FILE);
  std::unique_ptr<GeneralPlugin> fDisplay = Load(DISPLAY_FILE);
  BWindow* fEditorWindow;
};

/** The player in a process of its own. */
class Player {
public:
  Player() {
    std::string program = PLAYER_PROGRAM;
    char* const arguments[] = {program.data(), nullptr};
    EXPECT_EQ(posix_spawn(&fProcess, program.c_str(), nullptr, nullptr, arguments, environ), 0);
  }
  Player(const Player&) = delete;
  Player& operator=(const Player&) = delete;
  ~Player() {
    if (fProcess == 0) return;
    kill(fProcess, SIGKILL);
    waitpid(fProcess, nullptr, 0);
  }
  pid_t Process() const { return fProcess; }
  /** By SIGTERM, as at the end of a session. The state from `waitpid`, -1 when it does not end. */
  int End() {
    int state = -1;
    kill(fProcess, SIGTERM);
    if (eventually([&] { return waitpid(fProcess, &state, WNOHANG) == fProcess; })) fProcess = 0;
    return state;
  }

private:
  pid_t fProcess = 0;
};

} // namespace

TEST_F(AttackedWindows, NothingClosesAndNothingIsLost) {
  const std::vector<BMessenger> windows = fApp->WindowAddresses();
  const int32 loopers = fApp->CountLoopers();
  Peer peer;
  const int count = long_tests() ? 10000 : 1500;
  const std::string taken = peer.Ask(attack_on(getpid(), count, std::string("application/x-vnd.test-host ") + kEditor));
  EXPECT_GT(std::stoi(taken), 0);
  for (const BMessenger& looper : {BMessenger(fApp.get()), fApp->LooperOn(find_thread("VesmoE Communication Manager")),
                                   fApp->LooperOn(find_thread("VesmoD Communication Manager"))}) {
    const BMessage question('wait');
    BMessage answer;
    looper.SendMessage(&question, &answer); // all that was let through has been handled
  }
  EXPECT_EQ(fApp->WindowAddresses(), windows);
  EXPECT_EQ(fApp->CountLoopers(), loopers);
  EXPECT_TRUE(hands::is_shown(*fEditorWindow));
  EXPECT_EQ(FirstLine(), "x") << "the unsaved lyrics";
}

TEST(AttackedPlayer, KeepsAnsweringAndEndsCleanly) {
  const ScratchFolder folder;
  setenv("XDG_CONFIG_HOME", folder.Path().c_str(), 1);
  Player player;
  ASSERT_TRUE(eventually([] { return BMessenger(kEditor).IsValid(); }));
  Peer peer;
  const int count = long_tests() ? 10000 : 1500;
  const std::string taken = peer.Ask(attack_on(player.Process(), count, std::string(kHostSignature) + " " + kEditor));
  EXPECT_GT(std::stoi(taken), 0);
  const BMessage handshake(kMsgHostHandshake);
  BMessage answer;
  EXPECT_EQ(BMessenger(kHostSignature).SendMessage(&handshake, &answer), B_OK);
  EXPECT_EQ(answer.what, kMsgHostHandshake);
  EXPECT_TRUE(BMessenger(kEditor).IsValid());
  const int state = player.End();
  EXPECT_EQ(state, 0) << "state from waitpid";
}
