// How far the play position is from the sound put out. audio_chain.sh prepares the tracks and the sound server and
// runs this for each of them.
#include "bench/audio_errors.h"
#include "bench/audio_signal.h"
#include "bench/mpv_source.h"
#include "demo/sink_recorder.h"

#include <cstdio>
#include <exception>
#include <stdexcept>
#include <string>

namespace {

constexpr const char* kUsage = "usage: audio_chain --noise FILE.wav | --clicks FILE.wav | --columns\n"
                               "       audio_chain STRETCHER CONDITION TRACK   (TRACK named clicks… or noise…)";

std::string file_name(const std::string& path) {
  return path.substr(path.find_last_of('/') + 1);
}

void measure(const std::string& stretcher, const TCondition& condition, const std::string& path) {
  const TSinkRecorder recorder("heard.monitor");
  TMpvSource source(stretcher);
  const auto probes = run_condition(condition, source, path);
  recorder.WaitFor(clock_us() + 300'000);
  const THeard heard{recorder.Samples(), recorder.StartUs()};
  const auto errors = file_name(path).starts_with("clicks") ? click_errors(probes, heard, condition.speed)
                                                            : noise_errors(probes, heard, condition.speed != 1);
  std::printf("%-16s %-12s %-16s %s\n", file_name(path).c_str(), condition.name.c_str(),
              condition.speed == 1 ? "-" : stretcher.c_str(), error_row(errors).c_str());
  if (recorder.StartSpreadUs() > 1000)
    std::printf("  (the sound server's own clock was uncertain by %.1f ms)\n",
                static_cast<double>(recorder.StartSpreadUs()) / 1000);
}

int run(const std::vector<std::string>& args) {
  if (args.size() == 1 && args[0] == "--columns")
    return std::printf("%-16s %-12s %-16s %s\n", "track", "condition", "stretched by", kErrorColumns) < 0;
  if (args.size() == 2 && args[0] == "--noise") return !write_wav(args[1], timed_noise(kTrackSeconds));
  if (args.size() == 2 && args[0] == "--clicks") return !write_wav(args[1], click_track(kTrackSeconds));
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
