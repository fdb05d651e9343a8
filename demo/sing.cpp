// Times the demo song automatically, as a user would: listens to the sound output, presses the space bar in the
// editor's window when each line is heard, saves, and compares the saved tags with the true times.
#include "demo/decode_song.h"
#include "demo/song_clock.h"
#include "demo/sung_lines.h"
#include "demo/x_window.h"

#include <sys/stat.h>
#include <unistd.h>

#include <algorithm>
#include <cmath>
#include <cstdio>
#include <ctime>
#include <exception>
#include <fstream>
#include <stdexcept>

namespace {

struct TArguments {
  std::string song, times, lyrics, picture, errors;
};

void sleep_until(int64_t us) {
  const timespec when{us / 1'000'000, us % 1'000'000 * 1000};
  clock_nanosleep(CLOCK_MONOTONIC, TIMER_ABSTIME, &when, nullptr);
}

/** Presses the space bar as each line is heard; returns when each press was sent. */
std::vector<int64_t> tap_along(const std::vector<TSungLine>& lines, TSongClock& clock, TXWindow& editor) {
  constexpr int64_t kLastLookUs = 600'000;
  std::vector<int64_t> presses;
  for (const TSungLine& line : lines) {
    const double sungSec = static_cast<double>(line.trueMs) / 1000;
    sleep_until(clock.HeardAtUs(sungSec) - kLastLookUs);
    clock.Follow();
    if (clock.HeardAtUs(sungSec) < clock_us())
      throw std::runtime_error("the song was heard before the keys were ready");
    sleep_until(clock.HeardAtUs(sungSec));
    presses.push_back(editor.Press("space"));
  }
  return presses;
}

/** Identifies the file's last write. */
std::pair<int64_t, ino_t> file_state(const std::string& path) {
  struct stat state {};
  if (stat(path.c_str(), &state) != 0) return {0, 0};
  return {int64_t{state.st_mtim.tv_sec} * 1'000'000'000 + state.st_mtim.tv_nsec, state.st_ino};
}

void save_and_wait(TXWindow& editor, const std::string& lyrics) {
  const auto before = file_state(lyrics);
  editor.Press("s", "Control_L");
  for (int i = 0; i < 100; ++i) {
    usleep(50'000);
    const auto now = file_state(lyrics);
    if (now != before && now.second != 0) return;
  }
  throw std::runtime_error("Ctrl+S did not save " + lyrics);
}

/** Prints a row for every line; collects the errors. False if a line is missing, changed or untagged. */
bool compare(const std::vector<TSungLine>& lines, const std::vector<TSavedLine>& saved,
             const std::vector<int64_t>& presses, const TSongClock& clock, std::vector<long>& errors) {
  std::printf("%9s %12s %9s %9s  %s\n", "true ms", "heard at key", "tag ms", "error ms", "line");
  bool whole = saved.size() == lines.size();
  for (size_t i = 0; i < lines.size(); ++i) {
    const auto heardSec = clock.SongSecAt(presses[i]);
    std::printf("%9ld %12s ", lines[i].trueMs, heardSec ? std::to_string(*heardSec * 1000).substr(0, 8).c_str() : "?");
    if (i < saved.size() && saved[i].tagMs && saved[i].text == lines[i].text) {
      errors.push_back(*saved[i].tagMs - lines[i].trueMs);
      std::printf("%9ld %+9ld  %s\n", *saved[i].tagMs, errors.back(), lines[i].text.c_str());
    } else {
      whole = false;
      std::printf("%9s %9s  %s\n", "none", "", lines[i].text.c_str());
    }
  }
  if (!whole) std::printf("The saved file does not hold every line with a tag.\n");
  return whole;
}

void summarize(std::vector<long> errors) {
  for (long& error : errors) error = std::abs(error);
  std::sort(errors.begin(), errors.end());
  if (!errors.empty())
    std::printf("%zu lines: median error %ld ms, worst %ld ms\n", errors.size(), errors[errors.size() / 2],
                errors.back());
}

bool perform(const TArguments& args) {
  const TSinkRecorder recorder("heard.monitor");
  const auto lines = read_true_times(args.times);
  TSongClock clock(decode_song(args.song), recorder);
  TXWindow editor("Vesmo Editor", 30);
  editor.PaintBackground(0x3a5068);
  // The song starts only when everything is ready, even on a busy machine.
  TXWindow player("Sonivo", 5);
  player.Focus();
  const int64_t begunUs = player.Press("space");
  editor.Focus();
  if (!clock.WaitForStart(begunUs, 20)) throw std::runtime_error("the song is not heard");
  editor.Press("Home");
  const auto presses = tap_along(lines, clock, editor);
  usleep(500'000);
  save_and_wait(editor, args.lyrics);
  usleep(300'000);
  if (!editor.SaveScreen(args.picture)) throw std::runtime_error("cannot write " + args.picture);
  player.Close(); // also closes the editor's window
  std::vector<long> errors;
  const bool whole = compare(lines, read_saved_lines(args.lyrics), presses, clock, errors);
  summarize(errors);
  std::ofstream out(args.errors, std::ios::app);
  for (const long error : errors) out << error << '\n';
  return whole && out.flush().good();
}

} // namespace

int main(int argCount, char** args) {
  if (argCount != 6) {
    std::fprintf(stderr, "usage: sing SONG TIMES LYRICS PICTURE ERRORS\n");
    return 2;
  }
  try {
    return perform({args[1], args[2], args[3], args[4], args[5]}) ? 0 : 1;
  } catch (const std::exception& failure) {
    std::fprintf(stderr, "sing: %s\n", failure.what());
    return 1;
  }
}
