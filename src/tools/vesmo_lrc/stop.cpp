#include "tools/vesmo_lrc/stop.h"

#include <atomic>
#include <csignal>

namespace {

std::atomic<int> gStopSignal{0};
static_assert(std::atomic<int>::is_always_lock_free); // set by a signal handler

void remember(int signal) {
  gStopSignal = signal;
}

} // namespace

void catch_signals() {
  struct sigaction action {};
  action.sa_handler = remember; // without SA_RESTART, so that a blocking read is interrupted
  for (const int signal : {SIGINT, SIGTERM, SIGHUP}) sigaction(signal, &action, nullptr);
  std::signal(SIGPIPE, SIG_IGN);
}

int stop_signal() {
  return gStopSignal;
}
