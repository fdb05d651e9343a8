// The whole way of a stamp: key through the window system, editor, protocol, player, tag in the saved file.
// stamp_chain [--redrawing | --redrawing-words] LYRICS: the player plays the noise track into the sink "heard" and has
// LYRICS, untagged lines, open in its editor. Each key is pressed 3.1 or 6.9 ms after a hundredth of a second of the
// track is heard: the tag then shows the hundredth that was being heard, unless the stamp was taken more than 3.1 ms
// too early or too late. With --redrawing the window gets another size just before each key, so that the key waits for
// its drawing; with
// --redrawing-words, word by word is on as well, which takes the event's own time. The lines are then single words.
#include "bench/stamped_editor.h"
#include "bench/wait_until.h"
#include "demo/sung_lines.h"

#include <algorithm>
#include <cmath>
#include <cstdio>
#include <exception>
#include <stdexcept>
#include <string_view>

namespace {

constexpr long kHundredthMs = 10;
constexpr double kEarlyPhaseMs = 3.1, kLatePhaseMs = 6.9;
constexpr double kFirstPressSec = 4;
constexpr double kPressEverySec = 0.17;
constexpr size_t kMostPresses = 200;
constexpr int64_t kResizedBeforeUs = 2'000;

double phase_of(size_t press) {
  return press % 2 == 0 ? kEarlyPhaseMs : kLatePhaseMs;
}

std::vector<int64_t> press_often(size_t count, bool isRedrawing, TStampedEditor& editor) {
  std::vector<int64_t> presses;
  for (size_t i = 0; i < count; ++i) {
    const auto hundredthMs =
        std::lround((kFirstPressSec + static_cast<double>(i) * kPressEverySec) * 100) * kHundredthMs;
    editor.clock.Follow();
    const int64_t pressUs = editor.clock.HeardAtUs((static_cast<double>(hundredthMs) + phase_of(i)) / 1000);
    if (isRedrawing) {
      wait_until(pressUs - kResizedBeforeUs);
      editor.window.Resize();
    }
    wait_until(pressUs);
    presses.push_back(editor.window.Press("space"));
  }
  return presses;
}

/** How many presses of one kind got the tag they should. */
struct TTally {
  size_t right = 0, early = 0, late = 0, unknown = 0;
  double sumMs = 0; ///< tag plus half a hundredth, minus heard
};

TTally tally(double phaseMs, const std::vector<int64_t>& presses, const std::vector<TSavedLine>& saved,
             const TSongClock& clock) {
  TTally result;
  for (size_t i = 0; i < presses.size(); ++i) {
    if (phase_of(i) != phaseMs) continue;
    const auto heardSec = clock.SongSecAt(presses[i]);
    if (!heardSec || i >= saved.size() || !saved[i].tagMs) {
      ++result.unknown;
      continue;
    }
    const double heardMs = *heardSec * 1000;
    const long dueMs = std::lround(std::floor(heardMs / kHundredthMs)) * kHundredthMs;
    (*saved[i].tagMs == dueMs ? result.right : *saved[i].tagMs < dueMs ? result.early : result.late) += 1;
    result.sumMs += static_cast<double>(*saved[i].tagMs) + kHundredthMs / 2.0 - heardMs;
  }
  return result;
}

void print_row(const char* name, const TTally& result) {
  const size_t known = result.right + result.early + result.late;
  std::printf("%-26s %7zu %7zu %7zu %8zu %9.2f\n", name, result.right, result.early, result.late, result.unknown,
              known ? result.sumMs / static_cast<double>(known) : 0.0);
}

bool measure(const char* lyrics, bool isRedrawing, bool isWordByWord) {
  TStampedEditor editor;
  if (isWordByWord) editor.ToggleWordByWord();
  const size_t lineCount = read_saved_lines(lyrics).size();
  const auto presses = press_often(std::min(lineCount, kMostPresses), isRedrawing, editor);
  editor.Save();
  const auto saved = read_saved_lines(lyrics);
  std::printf("%-26s %7s %7s %7s %8s %9s\n", "key pressed", "right", "early", "late", "unknown", "mean ms");
  print_row("3.1 ms after a hundredth", tally(kEarlyPhaseMs, presses, saved, editor.clock));
  print_row("6.9 ms after a hundredth", tally(kLatePhaseMs, presses, saved, editor.clock));
  return saved.size() == lineCount;
}

} // namespace

int main(int argCount, char** args) {
  try {
    const std::string_view option = argCount == 3 ? args[1] : "";
    const bool isWordByWord = option == "--redrawing-words";
    const bool isRedrawing = isWordByWord || option == "--redrawing";
    if (argCount != 2 && !isRedrawing)
      throw std::runtime_error("usage: stamp_chain [--redrawing | --redrawing-words] LYRICS");
    return measure(args[argCount - 1], isRedrawing, isWordByWord) ? 0 : 1;
  } catch (const std::exception& failure) {
    std::fprintf(stderr, "stamp_chain: %s\n", failure.what());
    return 1;
  }
}
