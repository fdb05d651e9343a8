// From exec to a visible, drawn window, and what the program used when its start was over:
// startup_time RUNS TITLE-PART COMMAND… prints medians: milliseconds to the window, resident and proportional kB,
// milliseconds until the program is quiet, and its processor time in milliseconds.
#include <X11/Xlib.h>
#include <fcntl.h>
#include <spawn.h>
#include <sys/wait.h>
#include <unistd.h>

#include <algorithm>
#include <cstdio>
#include <ctime>
#include <exception>
#include <fstream>
#include <memory>
#include <span>
#include <stdexcept>
#include <string>
#include <utility>
#include <vector>

namespace {

constexpr double kPatienceMs = 30'000;
constexpr double kSettleMs = 700;   ///< memory is read when the start is over
constexpr double kQuietMs = 500;    ///< so long without work: the program is quiet since then
constexpr double kIdleShare = 0.05; ///< of a core; a blinking cursor and the like are not work

struct TFigures {
  double ms;
  long residentKb, proportionalKb;
  double quietMs, processorMs;
};

struct TDisplayEnd {
  void operator()(Display* display) const { XCloseDisplay(display); }
};
using TDisplayPtr = std::unique_ptr<Display, TDisplayEnd>;

double now_ms() {
  timespec now{};
  clock_gettime(CLOCK_MONOTONIC, &now);
  return static_cast<double>(now.tv_sec) * 1e3 + static_cast<double>(now.tv_nsec) / 1e6;
}

int ignore_error(Display*, XErrorEvent*) {
  return 0;
}

std::string title_of(Display* display, Window window) {
  Atom type = 0;
  int format = 0;
  unsigned long count = 0, left = 0;
  unsigned char* value = nullptr;
  XGetWindowProperty(display, window, XInternAtom(display, "_NET_WM_NAME", False), 0, 256, False,
                     XInternAtom(display, "UTF8_STRING", False), &type, &format, &count, &left, &value);
  std::string title = value ? std::string(reinterpret_cast<const char*>(value), count) : std::string();
  if (value) XFree(value);
  return title;
}

/** Whether a mapped child of the root has this in its title. */
bool is_shown(Display* display, const std::string& titlePart) {
  Window root = 0, parent = 0, *children = nullptr;
  unsigned int count = 0;
  if (!XQueryTree(display, DefaultRootWindow(display), &root, &parent, &children, &count)) return false;
  const bool shown = std::ranges::any_of(std::span(children, count), [&](Window window) {
    XWindowAttributes attributes{};
    return XGetWindowAttributes(display, window, &attributes) && attributes.map_state == IsViewable &&
           title_of(display, window).find(titlePart) != std::string::npos;
  });
  if (children) XFree(children);
  return shown;
}

pid_t start(const std::vector<char*>& command) {
  posix_spawn_file_actions_t actions;
  posix_spawn_file_actions_init(&actions);
  posix_spawn_file_actions_addopen(&actions, STDERR_FILENO, "/dev/null", O_WRONLY, 0);
  posix_spawn_file_actions_addopen(&actions, STDOUT_FILENO, "/dev/null", O_WRONLY, 0);
  pid_t pid = 0;
  if (posix_spawnp(&pid, command[0], &actions, nullptr, command.data(), environ) != 0)
    throw std::runtime_error(std::string("cannot start ") + command[0]);
  posix_spawn_file_actions_destroy(&actions);
  return pid;
}

long memory_kb(pid_t pid, const std::string& field) {
  std::ifstream file("/proc/" + std::to_string(pid) + "/smaps_rollup");
  for (std::string line; std::getline(file, line);)
    if (line.starts_with(field)) return std::stol(line.substr(field.size()));
  throw std::runtime_error("the program ended too early");
}

void stop(pid_t pid) {
  kill(pid, SIGTERM);
  for (int i = 0; i < 50; ++i, usleep(20'000))
    if (waitpid(pid, nullptr, WNOHANG) == pid) return;
  kill(pid, SIGKILL);
  waitpid(pid, nullptr, 0);
}

double processor_ms(pid_t pid) {
  clockid_t clock = 0;
  timespec used{};
  if (clock_getcpuclockid(pid, &clock) != 0 || clock_gettime(clock, &used) != 0)
    throw std::runtime_error("the program ended too early");
  return static_cast<double>(used.tv_sec) * 1e3 + static_cast<double>(used.tv_nsec) / 1e6;
}

/** When the program worked last, and what it had used by then. */
std::pair<double, double> wait_until_quiet(pid_t pid) {
  constexpr double kStepMs = 10;
  const double begin = now_ms();
  double lastWork = begin, used = processor_ms(pid);
  for (double before = begin; before - lastWork < kQuietMs && before - begin < kPatienceMs;) {
    usleep(static_cast<useconds_t>(kStepMs * 1000));
    const double now = now_ms(), usedNow = processor_ms(pid);
    if (usedNow - used > kIdleShare * (now - before)) lastWork = now;
    used = usedNow;
    before = now;
  }
  return {lastWork, used};
}

TFigures measure(Display* display, const std::string& titlePart, const std::vector<char*>& command) {
  const double startMs = now_ms();
  const pid_t pid = start(command);
  while (!is_shown(display, titlePart)) {
    if (now_ms() - startMs > kPatienceMs) {
      stop(pid);
      throw std::runtime_error("no window titled \"" + titlePart + "\" came up");
    }
    usleep(500);
  }
  const double shownMs = now_ms();
  const auto [quietMs, processorMs] = wait_until_quiet(pid);
  if (const double left = shownMs + kSettleMs - now_ms(); left > 0) usleep(static_cast<useconds_t>(left * 1000));
  const TFigures figures{shownMs - startMs, memory_kb(pid, "Rss:"), memory_kb(pid, "Pss:"), quietMs - startMs,
                         processorMs};
  stop(pid);
  return figures;
}

template <typename T>
T median(std::vector<TFigures> runs, T TFigures::*field) {
  std::ranges::sort(runs, {}, field);
  return runs[runs.size() / 2].*field;
}

} // namespace

int main(int argCount, char** args) {
  try {
    if (argCount < 4) throw std::runtime_error("usage: startup_time RUNS TITLE-PART COMMAND…");
    const TDisplayPtr display(XOpenDisplay(nullptr));
    if (!display) throw std::runtime_error("no X display");
    XSetErrorHandler(ignore_error);
    std::vector<char*> command(args + 3, args + argCount);
    command.push_back(nullptr);
    std::vector<TFigures> runs;
    for (int i = 0; i < std::stoi(args[1]); ++i) runs.push_back(measure(display.get(), args[2], command));
    std::printf("%.1f %ld %ld %.1f %.1f\n", median(runs, &TFigures::ms), median(runs, &TFigures::residentKb),
                median(runs, &TFigures::proportionalKb), median(runs, &TFigures::quietMs),
                median(runs, &TFigures::processorMs));
    return 0;
  } catch (const std::exception& failure) {
    std::fprintf(stderr, "startup_time: %s\n", failure.what());
    return 1;
  }
}
