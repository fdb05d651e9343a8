// How exactly a part of a song is played, and clicks are placed: the player's own source is recorded from the sound
// server. The song tells its own time by tones or clicks at known moments. song_parts.sh prepares the sound server.
#include "bench/audio_signal.h"
#include "demo/sink_recorder.h"
#include "player/sound/song_source.h"

#include <algorithm>
#include <atomic>
#include <chrono>
#include <cmath>
#include <cstdio>
#include <cstdlib>
#include <exception>
#include <numbers>
#include <optional>
#include <stdexcept>
#include <string>
#include <thread>

namespace {

constexpr double kSongSec = 40;
constexpr double kPi = std::numbers::pi;

/** Even seconds are silent, odd ones 1 kHz. */
std::vector<float> tones() {
  std::vector<float> samples;
  for (size_t i = 0; i < static_cast<size_t>(kSongSec * kSignalRate); ++i) {
    const bool isLoud = i / kSignalRate % 2 == 1;
    samples.push_back(isLoud ? static_cast<float>(0.4 * std::sin(static_cast<double>(i) * 2 * kPi * 1000 / kSignalRate))
                             : 0.0F);
  }
  return samples;
}

class TPartEvents : public TSongEvents {
public:
  void SongLoaded(int64, const TSongTags&) override { ++loaded; }
  void SongEnded(int64) override {}
  void SongFailed(int64, const std::string& reason) override { std::fprintf(stderr, "%s\n", reason.c_str()); }
  void PartEnded(int64 part) override { ended = part; }
  std::atomic<int> loaded{0};
  std::atomic<int64> ended{0};
};

void wait_ms(int ms) {
  std::this_thread::sleep_for(std::chrono::milliseconds(ms));
}

template <typename Condition>
void wait_until(const char* what, const Condition& condition) {
  for (int i = 0; i < 1000; ++i, wait_ms(10))
    if (condition()) return;
  throw std::runtime_error(what);
}

/** The first sample from `from` on that is louder, or the end. */
size_t first_loud(const std::vector<float>& heard, size_t from) {
  while (from < heard.size() && std::abs(heard[from]) < 0.1F) ++from;
  return from;
}

/** The first sample from `from` on after which 5 ms are silent, or the end. */
size_t first_silent(const std::vector<float>& heard, size_t from) {
  size_t silent = 0;
  for (; from < heard.size() && silent < kSignalRate / 200; ++from)
    silent = std::abs(heard[from]) < 0.01F ? silent + 1 : 0;
  return from - silent;
}

struct TFigures {
  std::vector<double> values;
  void Print(const char* what, const char* unit) {
    std::ranges::sort(values);
    if (values.empty()) throw std::runtime_error("nothing was heard");
    std::printf("%-52s n %3zu  median %8.2f  least %8.2f  greatest %8.2f %s\n", what, values.size(),
                values[values.size() / 2], values.front(), values.back(), unit);
  }
};

/** A source that plays `song`, loaded and paused, and what it puts out. */
struct TPlayed {
  explicit TPlayed(const std::string& song) : recorder("heard.monitor"), source(make_mpv_source(&events)) {
    source->Load(song, true);
    wait_until("the song is not loaded", [&] { return events.loaded > 0 && recorder.HasTiming(); });
    wait_ms(500);
  }
  size_t SampleAt(int64_t us) const {
    return static_cast<size_t>(std::max<int64_t>((us - recorder.StartUs()) * kSignalRate / 1000000, 0));
  }
  TPartEvents events;
  TSinkRecorder recorder;
  std::shared_ptr<TSongSource> source;
};

void measure_parts(const std::string& song, bool isPlaying) {
  TPlayed played(song);
  TFigures start;
  TFigures length;
  for (int i = 0; i < 20; ++i) {
    if (isPlaying) { // in the silence
      played.source->SeekTo(2000);
      played.source->SetPaused(false);
      wait_ms(200 + i * 7);
    }
    const int32 fromMs = 1000 * (2 * (i * 7 % 19) + 1) + 100;
    const int64_t asked = clock_us();
    const int64 part = played.source->PlayPart({fromMs, fromMs + 500});
    wait_until("the part does not end", [&] { return played.events.ended == part; });
    played.recorder.WaitFor(clock_us() + 300'000);
    const auto heard = played.recorder.Samples();
    const size_t from = first_loud(heard, played.SampleAt(asked));
    const size_t to = first_silent(heard, from);
    start.values.push_back(static_cast<double>(played.recorder.WhenUs(from) - asked) / 1000);
    length.values.push_back(static_cast<double>(to - from) * 1000 / kSignalRate);
    wait_ms(150 + i * 7);
  }
  start.Print(isPlaying ? "from the call to the sound, playing before" : "from the call to the sound, paused before",
              "ms");
  length.Print("heard of a part of 500 ms", "ms");
}

/** A loop over whole periods of the sine is the unbroken sine. */
void measure_loop(const std::string& song) {
  TPlayed played(song);
  const int64_t asked = clock_us();
  played.source->PlayPart({3200, 3700, true});
  wait_ms(5200);
  played.recorder.WaitFor(clock_us());
  const auto heard = played.recorder.Samples();
  size_t silent = 0;
  size_t longest = 0;
  const size_t first = first_loud(heard, played.SampleAt(asked));
  for (size_t i = first; i < first + 5 * kSignalRate && i < heard.size(); ++i) {
    silent = std::abs(heard[i]) < 0.04F ? silent + 1 : 0;
    longest = std::max(longest, silent);
  }
  std::printf("longest silence in 10 rounds of a loop of 500 ms        %8.2f ms\n",
              static_cast<double>(longest) * 1000 / kSignalRate);
}

/** Where the loudest 3 ms of the player's click are centred, after its beginning. */
double click_centre_sec(double speed) {
  std::vector<float> click(kSignalRate / 10);
  for (size_t i = 0; i < kSignalRate / 20; ++i) {
    const double t = static_cast<double>(i) / kSignalRate * speed;
    click[i + kSignalRate / 50] = static_cast<float>(0.4 * std::exp(-200 * t) * std::sin(2 * kPi * 1500 * t));
  }
  const auto centre = loudest_click(click, 0, click.size());
  return static_cast<double>(centre.value_or(0)) / kSignalRate - 0.02;
}

/** How a song is played in which clicks are measured. */
struct TClickPlay {
  const char* what;
  double speed = 1;
  TSoundChoices sound = {};
  std::string before = {}; // a silent song, shorter than the time of any click, that it follows without a gap
};

/** The song has clicks of its own at known times: the distance of the player's clicks to them is known. */
void measure_clicks(const std::string& song, const TClickPlay& play) {
  TPlayed played(play.before.empty() ? song : play.before);
  const double speed = play.speed;
  const std::vector<double> own = click_times(kSongSec);
  std::vector<int32> tagsMs;
  for (size_t i = 0; i + 1 < own.size(); ++i)
    if (own[i + 1] - own[i] > 0.2) tagsMs.push_back(static_cast<int32>((own[i] + 0.1) * 1000));
  played.source->SetClicks(tagsMs);
  if (speed != 1) played.source->SetSpeed(speed);
  played.source->SetSound(play.sound);
  if (!play.before.empty()) played.source->Follow(song);
  played.source->SeekTo(0);
  wait_ms(300);
  const int64_t asked = clock_us();
  played.source->SetPaused(false);
  wait_ms(12000);
  played.recorder.WaitFor(clock_us());
  const auto heard = played.recorder.Samples();
  // Each click of the song is looked for from where the one before was found.
  double lastSec = own.front();
  const size_t begin = first_loud(heard, played.SampleAt(asked));
  double lastAt = static_cast<double>(loudest_click(heard, begin, begin + kSignalRate / 20).value_or(begin));
  const auto centre = [&](double sec) {
    const auto expected = static_cast<size_t>(lastAt + (sec - lastSec) / speed * kSignalRate);
    const auto found = loudest_click(heard, expected - kSignalRate / 25, expected + kSignalRate / 25);
    return found ? std::optional(static_cast<double>(*found)) : std::nullopt;
  };
  TFigures error;
  for (auto next = own.begin() + 1; next + 1 != own.end() && *next < 11 * speed; ++next) {
    const auto ownAt = centre(*next);
    if (!ownAt) continue;
    lastSec = *next;
    lastAt = *ownAt;
    const auto tag = std::ranges::lower_bound(tagsMs, static_cast<int32>(lastSec * 1000));
    if (tag == tagsMs.end() || *tag / 1000.0 > *(next + 1)) continue;
    const auto tagAt = centre(*tag / 1000.0);
    if (!tagAt) throw std::runtime_error("a click is missing");
    const double expectedSec = (*tag / 1000.0 - lastSec) / speed + click_centre_sec(speed);
    error.values.push_back(((*tagAt - lastAt) / kSignalRate - expectedSec) * 1000);
  }
  error.Print(("clicks against tags, " + std::string(play.what)).c_str(), "ms");
}

} // namespace

int main(int argCount, char** args) {
  try {
    if (argCount != 2) throw std::runtime_error("usage: song_parts FOLDER");
    const std::string song = std::string(args[1]) + "/tones.wav";
    if (!write_wav(song, tones())) throw std::runtime_error("cannot write the song");
    measure_parts(song, false);
    measure_parts(song, true);
    measure_loop(song);
    const std::string clicks = std::string(args[1]) + "/clicks.wav";
    if (!write_wav(clicks, click_track(kSongSec))) throw std::runtime_error("cannot write the song");
    const std::string silence = std::string(args[1]) + "/silence.wav";
    if (!write_wav(silence, std::vector<float>(kSignalRate * 2 / 5))) throw std::runtime_error("cannot write the song");
    TSoundChoices equalized;
    equalized.isEqualized = true;
    equalized.bandsDb = {6, 3, 0, -3, -6, -3, 0, 3, 6, 3};
    TSoundChoices otherDevice;
    otherDevice.device = "pulse/heard"; // by name instead of as the default
    const TClickPlay plays[] = {{.what = "at 1.00x"},
                                {.what = "at 0.75x", .speed = 0.75},
                                {.what = "with the equalizer", .sound = equalized},
                                {.what = "on another output", .sound = otherDevice},
                                {.what = "after a gapless join", .before = silence}};
    for (const TClickPlay& play : plays) measure_clicks(clicks, play);
    return 0;
  } catch (const std::exception& failure) {
    std::fprintf(stderr, "song_parts: %s\n", failure.what());
    return 1;
  }
}
