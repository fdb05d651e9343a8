/** Closing while a tap test waits for an unresponsive sound server. A blocked close hangs these tests until the alarm
    ends them. */

#include "companion/prefs/click_track.h"
#include "tests/companion/prefs/pref_world.h"
#include "tests/support/sound_server.h"

#include <sys/socket.h>
#include <sys/un.h>

namespace {

/** Accepts connections and never answers. */
struct SilentServer {
  SilentServer() {
    sockaddr_un address{};
    address.sun_family = AF_UNIX;
    const std::string path = fFolder.File("socket");
    path.copy(address.sun_path, sizeof address.sun_path - 1);
    EXPECT_EQ(bind(fSocket, reinterpret_cast<const sockaddr*>(&address), sizeof address), 0);
    EXPECT_EQ(listen(fSocket, 4), 0);
    setenv("PULSE_SERVER", ("unix:" + path).c_str(), 1);
  }
  ~SilentServer() {
    unsetenv("PULSE_SERVER");
    close(fSocket);
  }
  int WaitForClient() const { return accept4(fSocket, nullptr, nullptr, SOCK_CLOEXEC); }

private:
  const ScratchFolder fFolder;
  const int fSocket = socket(AF_UNIX, SOCK_STREAM | SOCK_CLOEXEC, 0);
};

struct ClickCounter : BLooper {
  void MessageReceived(BMessage* message) override { fClicks += message->what == kMsgClick; }
  std::atomic<int> fClicks = 0;
};

} // namespace

struct SilentSoundServer : PrefWindow {
  /** Less than the sound library's own time-out of 30 s. */
  SilentSoundServer() { alarm(25); }
  ~SilentSoundServer() override { alarm(0); }
};

TEST_F(SilentSoundServer, ThatNeverAnswersDoesNotBlockClosing) {
  const SilentServer server;
  Open(open_click_output);
  SelectTab(kTiming);
  Click("StartTest");
  const int client = server.WaitForClient();
  ASSERT_GE(client, 0);
  ASSERT_TRUE(fWindow->Lock());
  std::exchange(fWindow, nullptr)->Quit();
  char bytes[4096];
  ssize_t count = 0;
  while ((count = read(client, bytes, sizeof bytes)) > 0) {
  }
  EXPECT_EQ(count, 0) << "the connection is closed with the window";
  close(client);
}

TEST_F(SilentSoundServer, ThatFreezesDuringATapTestDoesNotBlockItsEnd) {
  SoundServer server;
  const OwnLooper<ClickCounter> listener(new ClickCounter);
  listener->Run();
  {
    TClickTrack track(BMessenger(listener.get()), 1, open_click_output);
    track.Resume();
    EXPECT_TRUE(hands::until([&] { return listener->fClicks > 0; }));
    server.Freeze();
  }
  EXPECT_LT(listener->fClicks, TClickTrack::kClicks);
}
