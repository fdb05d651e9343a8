#include "family/family_comm_man.h"
#include "hostlink/host_protocol.h"
#include "platform/interface/window.h"
#include "plugin/message_codes.h"
#include "tests/processes/peer.h"
#include "tests/support/hands.h"
#include "tests/support/loaded_images.h"
#include "tests/support/long_tests.h"
#include "tests/support/messages.h"

namespace {

constexpr const char* kEditor = "application/x-vnd.KOREVA-VesmoEditor";

std::string attack_on(pid_t process, int count, const std::string& signatures) {
  const unsigned seed = std::random_device()();
  ::testing::Test::RecordProperty("seed", static_cast<int>(seed));
  return "letters " + std::to_string(count) + " " + std::to_string(seed) + " " + std::to_string(process) + " " +
         signatures;
}

/** Both images with all their windows, and unsaved lyrics. */
struct AttackedWindows : LoadedImages {
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
  std::unique_ptr<GeneralPlugin> fDisplay = Load(COMPANION_FILE);
  BWindow* fEditorWindow;
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
    wait_for(looper); // all that was let through has been handled
  }
  EXPECT_EQ(fApp->WindowAddresses(), windows);
  EXPECT_EQ(fApp->CountLoopers(), loopers);
  EXPECT_TRUE(hands::is_shown(*fEditorWindow));
  EXPECT_EQ(FirstLine(), "x") << "the unsaved lyrics";
}

TEST(AttackedPlayer, KeepsAnsweringAndEndsCleanly) {
  const ScratchFolder folder;
  setenv("XDG_CONFIG_HOME", folder.Path().c_str(), 1);
  ChildProcess player;
  player.Start({PLAYER_PROGRAM});
  ASSERT_TRUE(eventually([] { return BMessenger(kEditor).IsValid(); }));
  Peer peer;
  const int count = long_tests() ? 10000 : 1500;
  const std::string taken = peer.Ask(attack_on(player.Id(), count, std::string(kHostSignature) + " " + kEditor));
  EXPECT_GT(std::stoi(taken), 0);
  EXPECT_EQ(ask(BMessenger(kHostSignature), BMessage(kMsgHostHandshake)).what, kMsgHostHandshake);
  EXPECT_TRUE(BMessenger(kEditor).IsValid());
  EXPECT_EQ(player.Terminate(), 0) << "state from waitpid";
}
