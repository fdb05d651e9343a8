// From exec to a visible, drawn window, and the memory used then:
// startup_time RUNS TITLE-PART COMMAND… prints the median milliseconds, resident and proportional kB.
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
#include <vector>

namespace {

constexpr double kPatienceMs = 30'000;
constexpr useconds_t kSettleUs = 700'000; ///< memory is read when the start is over

struct TFigures {
  double ms;
  long residentKb, proportionalKb;
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
  usleep(kSettleUs);
  const TFigures figures{shownMs - startMs, memory_kb(pid, "Rss:"), memory_kb(pid, "Pss:")};
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
    std::printf("%.1f %ld %ld\n", median(runs, &TFigures::ms), median(runs, &TFigures::residentKb),
                median(runs, &TFigures::proportionalKb));
    return 0;
  } catch (const std::exception& failure) {
    std::fprintf(stderr, "startup_time: %s\n", failure.what());
    return 1;
  }
}
