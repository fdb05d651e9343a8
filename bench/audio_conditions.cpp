#include "bench/audio_conditions.h"

#include "demo/sink_recorder.h"

#include <chrono>
#include <random>
#include <stdexcept>
#include <thread>

namespace {

using TProbes = std::vector<TProbe>;

void wait_ms(int ms) {
  std::this_thread::sleep_for(std::chrono::milliseconds(ms));
}

TProbe ask(TPositionSource& source) {
  const int64_t before = clock_us();
  const double position = source.PositionSec();
  return {(before + clock_us()) / 2, position};
}

/** Asks at moments that fall into no step with the sound blocks. */
void ask_for(TPositionSource& source, double seconds, TProbes& probes) {
  static std::minstd_rand random(7);
  for (const int64_t end = clock_us() + static_cast<int64_t>(seconds * 1e6); clock_us() < end;) {
    wait_ms(std::uniform_int_distribution(3, 12)(random));
    probes.push_back(ask(source));
  }
}

void play(TPositionSource& source, TProbes& probes) {
  wait_ms(500);
  ask_for(source, 14, probes);
}

void play_with_seeks(TPositionSource& source, TProbes& probes) {
  for (const double target : {31.4, 7.7, 52.1, 20.0, 3.3, 44.9, 12.6, 36.5, 0.4, 27.2, 49.8, 16.1}) {
    source.Seek(target);
    wait_ms(300);
    ask_for(source, 1.2, probes);
  }
}

void play_with_pauses(TPositionSource& source, TProbes& probes) {
  for (int i = 0; i < 60; ++i) {
    wait_ms(200 + 7 * (i % 5));
    source.SetPaused(true);
    wait_ms(150);
    probes.push_back(ask(source));
    probes.back().frozen = true;
    source.SetPaused(false);
  }
}

} // namespace

TCondition parse_condition(const std::string& text) {
  const size_t at = text.find('@');
  const std::string action = text.substr(0, at);
  if (action != "play" && action != "seeks" && action != "paused") throw std::runtime_error("no condition " + text);
  return {text, action, at == std::string::npos ? 1 : std::stod(text.substr(at + 1))};
}

TProbes run_condition(const TCondition& condition, TPositionSource& source, const std::string& path) {
  TProbes probes;
  source.Play(path);
  if (condition.speed != 1) source.SetSpeed(condition.speed);
  if (condition.action == "seeks")
    play_with_seeks(source, probes);
  else if (condition.action == "paused")
    play_with_pauses(source, probes);
  else
    play(source, probes);
  return probes;
}
