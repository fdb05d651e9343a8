// The whole way of words: key press and release through the window system, editor, protocol, player, tags in the saved
// file. word_chain LYRICS: the player plays the noise track into the sink "heard" and has LYRICS open in its editor:
// lines of several words, then lines of one word. Word by word, the words are tapped ten times a second, each held for
// 60 ms; then each line of one word is held until it writes the line's end, whose time is that of the release. A time
// is right within 10 ms of what was heard at the key's event.
#include "bench/stamped_editor.h"
#include "bench/wait_until.h"

#include <unistd.h>

#include <algorithm>
#include <cmath>
#include <cstdio>
#include <exception>
#include <fstream>
#include <stdexcept>
#include <string>

namespace {

constexpr int64_t kTapEveryUs = 100'000, kTapHeldUs = 60'000;
/** Longer than the editor's limit for a line's end. */
constexpr int64_t kEndEveryUs = 350'000, kEndHeldUs = 230'000;
constexpr double kRightWithinMs = 10;
/** A tag shows the hundredth that has begun. */
constexpr double kMiddleOfTagMs = 5;

/** The times of the tags in a line. Independent of the editor's own parser, which is being tested. */
std::vector<long> tags_of(const std::string& line) {
  std::vector<long> timesMs;
  for (size_t at = line.find('['); at != std::string::npos; at = line.find('[', at + 1)) {
    int minutes = 0, seconds = 0, hundredths = 0, length = 0;
    if (std::sscanf(line.c_str() + at, "[%2d:%2d:%2d]%n", &minutes, &seconds, &hundredths, &length) == 3 &&
        length == 10)
      timesMs.push_back(minutes * 60'000L + seconds * 1000L + hundredths * 10L);
  }
  return timesMs;
}

std::vector<std::string> read_lines(const char* path) {
  std::vector<std::string> lines;
  std::ifstream file(path);
  for (std::string line; std::getline(file, line);)
    if (line.find_first_not_of('\0') != std::string::npos) lines.push_back(line);
  return lines;
}

size_t words_in(const std::string& line) {
  return static_cast<size_t>(std::ranges::count(line, ' ')) + 1;
}

/** Key events in their order, and the tags that they should have written. */
struct TTimes {
  std::vector<int64_t> eventsUs;
  std::vector<long> tagsMs;
};

void print_row(const char* name, const TTimes& times, const TSongClock& clock) {
  size_t right = 0, unknown = 0;
  double sumMs = 0, worstMs = 0;
  for (size_t i = 0; i < times.eventsUs.size(); ++i) {
    const auto heardSec = clock.SongSecAt(times.eventsUs[i]);
    if (!heardSec || i >= times.tagsMs.size()) {
      ++unknown;
      continue;
    }
    const double errorMs = static_cast<double>(times.tagsMs[i]) + kMiddleOfTagMs - *heardSec * 1000;
    right += std::abs(errorMs) <= kRightWithinMs ? 1 : 0;
    worstMs = std::max(worstMs, std::abs(errorMs));
    sumMs += errorMs;
  }
  const size_t known = times.eventsUs.size() - unknown;
  std::printf("%-26s %7zu %7zu %8zu %9.2f %9.2f\n", name, times.eventsUs.size(), right, unknown,
              known ? sumMs / static_cast<double>(known) : 0.0, worstMs);
}

/** Presses and releases of keys that follow each other. */
void tap(size_t count, int64_t everyUs, int64_t heldUs, TXWindow& editor, TTimes* presses, TTimes* releases) {
  const int64_t beginUs = clock_us() + everyUs;
  for (size_t i = 0; i < count; ++i) {
    const int64_t pressUs = beginUs + static_cast<int64_t>(i) * everyUs;
    wait_until(pressUs);
    presses->eventsUs.push_back(editor.PressDown("space"));
    wait_until(pressUs + heldUs);
    const int64_t releasedUs = editor.Release("space");
    if (releases) releases->eventsUs.push_back(releasedUs);
  }
}

bool measure(const char* lyrics) {
  TStampedEditor editor;
  editor.ToggleWordByWord();
  usleep(500'000);
  const auto lines = read_lines(lyrics);
  size_t words = 0;
  for (const std::string& line : lines) words += words_in(line) > 1 ? words_in(line) : 0;
  const auto ends = static_cast<size_t>(std::ranges::count(lines, size_t{1}, words_in));
  TTimes taps, holds, releases;
  tap(words, kTapEveryUs, kTapHeldUs, editor.window, &taps, nullptr);
  usleep(500'000);
  tap(ends, kEndEveryUs, kEndHeldUs, editor.window, &holds, &releases);
  editor.Save();
  const auto saved = read_lines(lyrics);
  for (size_t i = 0; i < saved.size() && i < lines.size(); ++i) {
    std::vector<long> tags = tags_of(saved[i]);
    const bool isOneWord = words_in(lines[i]) == 1;
    tags.resize(isOneWord ? 2 : words_in(lines[i]), -1'000'000); // a missing tag is a wrong one
    if (isOneWord) releases.tagsMs.push_back(tags.back());
    if (isOneWord) tags.pop_back();
    TTimes& presses = isOneWord ? holds : taps;
    presses.tagsMs.insert(presses.tagsMs.end(), tags.begin(), tags.end());
  }
  std::printf("%-26s %7s %7s %8s %9s %9s\n", "word by word", "events", "right", "unknown", "mean ms", "worst ms");
  print_row("presses, 10 a second", taps, editor.clock);
  print_row("presses of held keys", holds, editor.clock);
  print_row("releases of held keys", releases, editor.clock);
  return saved.size() == lines.size();
}

} // namespace

int main(int argCount, char** args) {
  try {
    if (argCount != 2) throw std::runtime_error("usage: word_chain LYRICS");
    return measure(args[1]) ? 0 : 1;
  } catch (const std::exception& failure) {
    std::fprintf(stderr, "word_chain: %s\n", failure.what());
    return 1;
  }
}
