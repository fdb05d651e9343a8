// A plug-in for the player that asks for the play position over the front-end protocol, as the editor does when a line
// is stamped, and writes down when it asked and what it was told. Loaded by a player that audio_chain starts.
#include "plugin/general_plugin.h"

#include "demo/sink_recorder.h"
#include "platform/app/looper.h"
#include "platform/app/message.h"
#include "platform/app/messenger.h"

#include <atomic>
#include <chrono>
#include <cstdlib>
#include <cstring>
#include <fstream>
#include <random>
#include <thread>

namespace {

constexpr const char* kHost = "application/x-vnd.Marvik-Sonivo";
constexpr uint32 kHandshake = 'SNVm';   // answer: "Msgr" (messenger)
constexpr uint32 kInformation = 'SNVi'; // answer: "Info" (124 bytes, int32 position in ms at 4)
constexpr ssize_t kRecordSize = 124;
constexpr size_t kPositionOffset = 4;

/** Takes the host's answers and writes one line each: asked (µs), answered (µs), position (ms).
    fAskedUs passes from the asking thread to the looper's; the rest is the looper's. */
class TAnswers : public BLooper {
public:
  explicit TAnswers(const char* logPath) : BLooper("chain probe"), fLog(logPath) {}

  void MessageReceived(BMessage* message) override {
    if (message->what == kHandshake && message->FindMessenger("Msgr", &fHost) == B_OK) return;
    if (message->what == kInformation)
      Note(*message);
    else
      BLooper::MessageReceived(message);
  }

  /** Asks, if the last question was answered. With the looper locked. */
  void Ask() {
    if (!fHost.IsValid()) {
      BMessenger(kHost).SendMessage(kHandshake, this);
    } else if (fAskedUs == 0) {
      fAskedUs = clock_us();
      fHost.SendMessage(kInformation, this);
    }
  }

private:
  void Note(const BMessage& message) {
    const void* record = nullptr;
    ssize_t size = 0;
    if (message.FindData("Info", 'CSTR', &record, &size) != B_OK || size < kRecordSize) return;
    int32 positionMs = 0;
    std::memcpy(&positionMs, static_cast<const char*>(record) + kPositionOffset, sizeof positionMs);
    fLog << fAskedUs << ' ' << clock_us() << ' ' << positionMs << std::endl;
    fAskedUs = 0;
  }

  BMessenger fHost;
  int64_t fAskedUs = 0;
  std::ofstream fLog;
};

/** Asks at moments that fall into no step with anything. */
class TProbePlugin : public GeneralPlugin {
public:
  explicit TProbePlugin(const char* logPath) : fAnswers(new TAnswers(logPath)) {
    fAnswers->Run();
    fAsker = std::jthread([this](const std::stop_token& stop) { AskUntil(stop); });
  }
  ~TProbePlugin() override {
    fAsker = {};
    if (fAnswers->Lock()) fAnswers->Quit();
  }
  bool Init() override { return true; }
  void Cleanup() override {}
  bool About(bool) override { return false; }
  bool Prefs(bool) override { return false; }
  uint32 GetFlags() override { return 0; }

private:
  void AskUntil(const std::stop_token& stop) {
    std::minstd_rand random(3);
    while (!stop.stop_requested()) {
      std::this_thread::sleep_for(std::chrono::milliseconds(std::uniform_int_distribution(8, 30)(random)));
      if (!fAnswers->Lock()) return;
      fAnswers->Ask();
      fAnswers->Unlock();
    }
  }

  TAnswers* fAnswers; // deletes itself when told to quit
  std::jthread fAsker;
};

} // namespace

extern "C" __attribute__((visibility("default"))) GeneralPlugin* NewPlugin(PluginConstructorStruct*) {
  const char* logPath = std::getenv("CHAIN_PROBE_LOG");
  return new TProbePlugin(logPath ? logPath : "chain_probe.log");
}
