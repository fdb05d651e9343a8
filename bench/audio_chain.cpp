// How far the play position is from the sound put out. audio_chain.sh prepares the tracks and the sound server and
// runs this for each of them.
#include "bench/audio_errors.h"
#include "bench/audio_signal.h"
#include "bench/engine_source.h"
#include "bench/library_source.h"
#include "bench/player_run.h"
#include "demo/sink_recorder.h"

#include <cstdio>
#include <exception>
#include <memory>
#include <stdexcept>
#include <string>

namespace {

constexpr const char* kUsage = R"(usage: audio_chain --noise FILE.wav | --clicks FILE.wav | --columns
       audio_chain BY CONDITION TRACK       TRACK named clicks… or noise…; BY is "engine" (the player's own source), "engine+filters",
                                            "engine+clicks" (one a second), "library", or the library's filter for other speeds
       audio_chain --player PROGRAM TRACK
       audio_chain --source NAME PROGRAM TRACK      while the player NAME, on the session bus, plays TRACK)";
constexpr double kPlayerSeconds = 15;

std::string file_name(const std::string& path) {
  return path.substr(path.find_last_of('/') + 1);
}

void print_row(const std::string& path, const std::string& condition, const std::string& means, const TErrors& errors,
               const TSinkRecorder& recorder) {
  std::printf("%-16s %-12s %-16s %s\n", file_name(path).c_str(), condition.c_str(), means.c_str(),
              error_row(errors).c_str());
  if (recorder.StartSpreadUs() > 1000)
    std::printf("  (the sound server's own clock was uncertain by %.1f ms)\n",
                static_cast<double>(recorder.StartSpreadUs()) / 1000);
}

THeard finished_record(const TSinkRecorder& recorder) {
  recorder.WaitFor(clock_us() + 300'000);
  return {recorder.Samples(), recorder.StartUs()};
}

std::unique_ptr<TPositionSource> make_source(const std::string& by) {
  if (by == "engine") return std::make_unique<TEngineSource>();
  if (by == "engine+filters")
    return std::make_unique<TEngineSource>(TSoundChoices{TReplayGain::kTrack, 30, true, {6, 3, 0, -3, 0, 0, 3, -4}});
  if (by == "engine+clicks") {
    std::vector<int32> clicksMs;
    for (int32 ms = 500; ms < kTrackSeconds * 1000; ms += 1000) clicksMs.push_back(ms);
    return std::make_unique<TEngineSource>(TSoundChoices{}, clicksMs);
  }
  return std::make_unique<TLibrarySource>(by == "library" ? "" : by);
}

void measure(const std::string& by, const TCondition& condition, const std::string& path) {
  const TSinkRecorder recorder("heard.monitor");
  const auto source = make_source(by);
  const auto probes = run_condition(condition, *source, path);
  const auto heard = finished_record(recorder);
  const auto errors = file_name(path).starts_with("clicks") ? click_errors(probes, heard, condition.speed)
                                                            : noise_errors(probes, heard, condition.speed != 1);
  print_row(path, condition.name, by, errors, recorder);
}

void measure_player(const std::string& player, const std::string& path) {
  const TSinkRecorder recorder("heard.monitor");
  const auto probes = probe_player(player, {path}, kPlayerSeconds);
  print_row(path, "play", "player, protocol", noise_errors(probes, finished_record(recorder), false), recorder);
}

/** The first seconds are left out: by then the position is reckoned from several answers. */
void measure_other_player(const std::string& name, const std::string& player, const std::string& path) {
  const TSinkRecorder recorder("heard.monitor");
  auto probes = probe_player(player, {"--new", "--source", name}, kPlayerSeconds);
  const int64_t settledUs = probes.front().atUs + 3'000'000;
  std::erase_if(probes, [&](const TProbe& probe) { return probe.atUs < settledUs; });
  print_row(path, "play", name + ", bus", noise_errors(probes, finished_record(recorder), false), recorder);
}

int run(const std::vector<std::string>& args) {
  if (args.size() == 1 && args[0] == "--columns")
    return std::printf("%-16s %-12s %-16s %s\n", "track", "condition", "by", kErrorColumns) < 0;
  if (args.size() == 2 && args[0] == "--noise") return !write_wav(args[1], timed_noise(kTrackSeconds));
  if (args.size() == 2 && args[0] == "--clicks") return !write_wav(args[1], click_track(kTrackSeconds));
  if (args.size() == 3 && args[0] == "--player") {
    measure_player(args[1], args[2]);
    return 0;
  }
  if (args.size() == 4 && args[0] == "--source") {
    measure_other_player(args[1], args[2], args[3]);
    return 0;
  }
  if (args.size() != 3) throw std::runtime_error(kUsage);
  measure(args[0], parse_condition(args[1]), args[2]);
  return 0;
}

} // namespace

int main(int argCount, char** args) {
  try {
    return run({args + 1, args + argCount});
  } catch (const std::exception& failure) {
    std::fprintf(stderr, "audio_chain: %s\n", failure.what());
    return 1;
  }
}
