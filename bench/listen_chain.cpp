// How soon a part of the song is heard: key through the window system, editor, protocol, player, sound. listen_chain
// LYRICS: the player has the noise track loaded and paused, its output goes to the sink "heard", and LYRICS, tagged
// lines, are open in its editor. Each line's first 500 ms are played by its key.
#include "bench/wait_until.h"
#include "demo/sink_recorder.h"
#include "demo/sung_lines.h"
#include "demo/x_window.h"

#include <unistd.h>

#include <algorithm>
#include <cmath>
#include <cstdio>
#include <exception>
#include <stdexcept>
#include <vector>

namespace {

/** A part, and the pause at its end. */
constexpr int64_t kEveryUs = 900'000;
constexpr float kLoud = 0.02F;

void measure(const char* lyrics) {
  const TSinkRecorder recorder("heard.monitor");
  TXWindow editor("Vesmo Editor", 30);
  editor.Focus();
  wait_until(clock_us() + 3'000'000); // the track is loaded, the sound server's timing is known
  editor.Press("Home");
  std::vector<int64_t> presses;
  for (size_t left = read_saved_lines(lyrics).size(); left > 0; --left) {
    presses.push_back(editor.Press("2"));
    wait_until(presses.back() + kEveryUs + static_cast<int64_t>(left) * 1'000);
    editor.Press("Down");
  }
  recorder.WaitFor(clock_us());
  const std::vector<float> heard = recorder.Samples();
  std::vector<double> waitsMs;
  for (const int64_t pressUs : presses) {
    auto at =
        static_cast<size_t>(std::max<int64_t>(pressUs - recorder.StartUs(), 0) * TSinkRecorder::kRate / 1'000'000);
    while (at < heard.size() && std::abs(heard[at]) < kLoud) ++at;
    waitsMs.push_back(static_cast<double>(recorder.WhenUs(at) - pressUs) / 1000);
  }
  if (waitsMs.empty()) throw std::runtime_error("there is no line");
  std::ranges::sort(waitsMs);
  std::printf("from the key to the sound of the part: n %zu, median %.1f ms, worst %.1f ms\n", waitsMs.size(),
              waitsMs[waitsMs.size() / 2], waitsMs.back());
}

} // namespace

int main(int argCount, char** args) {
  try {
    if (argCount != 2) throw std::runtime_error("usage: listen_chain LYRICS");
    measure(args[1]);
    return 0;
  } catch (const std::exception& failure) {
    std::fprintf(stderr, "listen_chain: %s\n", failure.what());
    return 1;
  }
}
