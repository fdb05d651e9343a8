#include "companion/prefs/timing_page.h"
#include "lyrics/reaction_time.h"
#include "platform/kernel/threads.h"
#include "plugin/message_codes.h"
#include "tests/companion/prefs/pref_world.h"
#include "tests/support/hands.h"
#include "tests/support/own_looper.h"

#include <atomic>
#include <condition_variable>
#include <mutex>
#include <thread>

namespace {

/** An audio output that blocks its track until LetGo and then fails. */
class Gate {
public:
  TClickTrack::TOpen Open() {
    return [this](const TIsCancelled&) { return std::make_unique<Output>(this); };
  }
  void LetGo() {
    const std::lock_guard lock(fMutex);
    fIsOpen = true;
    fChanged.notify_all();
  }

private:
  class Output : public TClickOutput {
  public:
    explicit Output(Gate* gate) : fGate(gate) {}
    bool Write(std::span<const int16>) override {
      std::unique_lock lock(fGate->fMutex);
      fGate->fChanged.wait(lock, [this] { return fGate->fIsOpen; });
      return false;
    }
    bigtime_t LatencyUs() override { return 0; }

  private:
    Gate* const fGate;
  };
  std::mutex fMutex; // guards fIsOpen
  std::condition_variable fChanged;
  bool fIsOpen = false;
};

/** Accepts all samples at once, with a latency, and records the positions of the clicks. */
class Tape : public TClickOutput {
public:
  struct Heard {
    std::vector<size_t> clicks;
    size_t length = 0;
  };
  explicit Tape(Heard* heard) : fHeard(heard) {}
  bool Write(std::span<const int16> samples) override {
    if (samples[0] != 0) fHeard->clicks.push_back(fHeard->length);
    fHeard->length += samples.size();
    return true;
  }
  bigtime_t LatencyUs() override { return 20000; }

private:
  Heard* const fHeard;
};

class Listener : public BLooper {
public:
  void MessageReceived(BMessage* message) override {
    int64 whenUs = 0;
    if (message->FindInt64("WhenUs", &whenUs) == B_OK) fIsPast &= whenUs <= system_time();
    if (message->what == kMsgClick) ++fClicks;
    fHasEnded |= message->what == kMsgTrackEnded;
  }
  int fClicks = 0;
  bool fIsPast = true;
  bool fHasEnded = false;
};

} // namespace

class TimingPage : public PrefWindow {
protected:
  void Say(uint32 what, const char* field = nullptr, int64 value = 0, int32 test = 1) {
    BMessage message(what);
    message.AddInt32("Test", test);
    if (field) message.AddInt64(field, value);
    fWindow->PostMessage(&message, fWindow->FindView("Timing"));
    Settle();
  }
  void Tap(int64 whenUs) {
    BMessage key(B_KEY_DOWN);
    key.AddString("bytes", " ");
    key.AddInt64("when", whenUs);
    fWindow->PostMessage(&key, fWindow->FindView("TapPad"));
  }
};

TEST_F(TimingPage, LateTapsProposeAnOffsetThatIsSetOnlyByItsButton) {
  Gate gate;
  Open(gate.Open());
  SelectTab(kTiming);
  EXPECT_FALSE(hands::spoken(*fWindow, "UseTapResult").isEnabled);
  Click("StartTest");
  EXPECT_EQ(hands::focused_view(*fWindow), "TapPad");
  for (int64 click = 1; click <= TClickTrack::kClicks; ++click) {
    Say(kMsgClick, "WhenUs", click * 750000);
    Tap(click * 750000 + 85000);
    if (click == 5) Say(kMsgClick, "WhenUs", 0, 0); // of a cancelled test
  }
  gate.LetGo();
  EXPECT_TRUE(hands::until([this] {
    Settle();
    return hands::spoken(*fWindow, "UseTapResult").isEnabled;
  }));
  EXPECT_EQ(Label("TapResult"), "You tap about 85 ms after the click.");
  EXPECT_THAT(Notices(), testing::IsEmpty());
  Click("UseTapResult");
  EXPECT_THAT(Notices(), testing::ElementsAre("Sptc: TmDf"));
  EXPECT_EQ(gPref->Values()->timeOffsetMs, -85);
}

TEST_F(TimingPage, WithoutTapsNothingIsProposed) {
  Gate gate;
  gate.LetGo();
  Open(gate.Open());
  SelectTab(kTiming);
  const std::string before = Label("TapResult");
  Click("StartTest");
  EXPECT_TRUE(hands::until([&] {
    Settle();
    return Label("TapResult") != before;
  }));
  EXPECT_FALSE(hands::spoken(*fWindow, "UseTapResult").isEnabled);
}

TEST_F(TimingPage, ClosingTheWindowCancelsARunningTest) {
  std::atomic<bool> isCancelled = false;
  Open([&isCancelled](const TIsCancelled& isCancelledNow) -> std::unique_ptr<TClickOutput> {
    while (!isCancelledNow()) std::this_thread::yield();
    isCancelled = true;
    return nullptr;
  });
  SelectTab(kTiming);
  Click("StartTest");
  Press("Escape");
  EXPECT_TRUE(isCancelled);
}

TEST_F(TimingPage, LatencyMeasuredByTheEditorIsProposed) {
  Open();
  BMessage hint(kMsgStampHint);
  hint.AddInt32("LateMs", 140);
  hint.AddInt32("TmDf", -20);
  Post(hint);
  SelectTab(kTiming);
  EXPECT_EQ(Label("StampHint"), "Your stamps are about 140 ms late");
  Click("UseStampHint");
  Notices();
  EXPECT_EQ(gPref->Values()->timeOffsetMs, -160);
}

TEST(ClickTrack, ClicksAreEvenAndReportedWhenHeard) {
  const OwnLooper<Listener> listener(new Listener);
  Tape::Heard heard;
  {
    TClickTrack track(BMessenger(listener.get()), 1,
                      [&heard](const TIsCancelled&) { return std::make_unique<Tape>(&heard); });
    track.Resume();
    EXPECT_TRUE(hands::until([&listener] {
      listener->DeliverAll();
      return listener->fHasEnded;
    }));
  }
  EXPECT_EQ(listener->fClicks, TClickTrack::kClicks);
  EXPECT_TRUE(listener->fIsPast);
  ASSERT_EQ(heard.clicks.size(), size_t{TClickTrack::kClicks});
  for (size_t i = 1; i < heard.clicks.size(); ++i) EXPECT_EQ(heard.clicks[i] - heard.clicks[i - 1], 36000U);
}
