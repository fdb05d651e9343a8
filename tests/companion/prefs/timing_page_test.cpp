#include "companion/prefs/timing_page.h"
#include "lyrics/reaction_time.h"
#include "tests/companion/prefs/pref_world.h"
#include "tests/support/keeping.h"

namespace {

/** An audio output that is what its function makes of the samples. */
struct Output : TClickOutput {
  using TTake = std::function<bool(std::span<const int16>)>;
  explicit Output(TTake take) : fTake(std::move(take)) {}
  bool Write(std::span<const int16> samples) override { return fTake(samples); }
  bigtime_t LatencyUs() override { return 20000; }
  const TTake fTake;
};

TClickTrack::TOpen output_to(const Output::TTake& take) {
  return [take](const TIsCancelled&) { return std::make_unique<Output>(take); };
}

} // namespace

struct TimingPage : PrefWindow {
  void Say(uint32 what, const char* name = nullptr, int64 value = 0, int32 test = 1) {
    BMessage message = message_of(what, "Test", test);
    if (name) message.AddInt64(name, value);
    fWindow->PostMessage(&message, fWindow->FindView("Timing"));
    Settle();
  }
  void Tap(int64 whenUs) {
    const BMessage key = message_of(B_KEY_DOWN, "bytes", " ", "when", whenUs);
    fWindow->PostMessage(&key, fWindow->FindView("TapPad"));
  }
};

TEST_F(TimingPage, LateTapsProposeAnOffsetThatIsSetOnlyByItsButton) {
  std::promise<void> gate;
  Open(output_to([passes = gate.get_future().share()](const auto&) { return passes.wait(), false; }));
  SelectTab(kTiming);
  EXPECT_FALSE(hands::spoken(*fWindow, "UseTapResult").isEnabled);
  Click("StartTest");
  EXPECT_EQ(hands::focused_view(*fWindow), "TapPad");
  const auto light = [this] { return hands::pixels(*fWindow, "TapPad").substr(0, 3); };
  const std::string dark = light();
  for (int64 click = 1; click <= TClickTrack::kClicks; ++click) {
    Say(kMsgClick, "WhenUs", click * 750000);
    Tap(click * 750000 + 85000);
    if (click == 5) Say(kMsgClick, "WhenUs", 0, 0); // of a cancelled test
  }
  EXPECT_TRUE(Until([&] { return light() == dark; }));
  const std::string note = Label("TapNote");
  Say(kMsgNoSound);
  EXPECT_NE(Label("TapNote"), note);
  gate.set_value();
  EXPECT_TRUE(Until([this] { return hands::spoken(*fWindow, "UseTapResult").isEnabled; }));
  EXPECT_EQ(Label("TapResult"), "You tap about 85 ms after the click.");
  EXPECT_THAT(Notices(), testing::IsEmpty());
  Click("UseTapResult");
  EXPECT_THAT(Notices(), testing::ElementsAre("Sptc: TmDf"));
  EXPECT_EQ(gPref->Values()->timeOffsetMs, -85);
}

TEST_F(TimingPage, WithoutTapsNothingIsProposed) {
  Open(output_to([](const auto&) { return false; }));
  SelectTab(kTiming);
  const std::string before = Label("TapResult");
  Click("StartTest");
  EXPECT_TRUE(Until([&] { return Label("TapResult") != before; }));
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

TEST(ClickTrack, ClicksAreEvenAndReportedWhenHeard) {
  const OwnLooper<Keeping<BLooper>> listener(new Keeping<BLooper>);
  std::vector<size_t> clicks;
  size_t length = 0;
  const auto record = [&](std::span<const int16> samples) {
    if (samples[0] != 0) clicks.push_back(length);
    length += samples.size();
    return true;
  };
  {
    TClickTrack track(BMessenger(listener.get()), 1, output_to(record));
    track.Resume();
    EXPECT_TRUE(hands::until([&listener] {
      while (listener->DeliverNext())
        EXPECT_LE(field<int64>(listener->fReceived.back(), "WhenUs").value_or(0), system_time());
      return !listener->fReceived.empty() && listener->fReceived.back().what == kMsgTrackEnded;
    }));
  }
  EXPECT_EQ(std::ranges::count(listener->Codes(), uint32{kMsgClick}), TClickTrack::kClicks);
  ASSERT_EQ(clicks.size(), size_t{TClickTrack::kClicks});
  for (size_t i = 1; i < clicks.size(); ++i) EXPECT_EQ(clicks[i] - clicks[i - 1], 36000U);
}
