#include "player/app/end_signals.h"

#include "platform/app/message.h"
#include "player/model/display_thread_check.h"
#include "player/model/player_messages.h"

#include <sys/eventfd.h>
#include <unistd.h>

#include <atomic>
#include <cerrno>
#include <csignal>

namespace {

constexpr int kSignals[] = {SIGTERM, SIGINT, SIGHUP};

std::atomic<int> bell{-1};

/** Signal handler: async-signal-safe calls only. */
void ring(int) {
  const int before = errno;
  eventfd_write(bell, 1);
  errno = before;
}

void handle_signals(void (*handler)(int), int flags) {
  struct sigaction action {};
  action.sa_handler = handler;
  action.sa_flags = flags;
  for (const int number : kSignals) sigaction(number, &action, nullptr);
}

int new_bell() {
  bell = eventfd(0, EFD_CLOEXEC | EFD_NONBLOCK);
  return bell;
}

} // namespace

TEndSignals::TEndSignals(const BMessenger& player, QObject* parent)
    : QSocketNotifier(new_bell(), QSocketNotifier::Read, parent) {
  check_display_thread();
  connect(this, &QSocketNotifier::activated, this, [player] {
    eventfd_t rings = 0;
    eventfd_read(bell, &rings);
    const BMessage close(kMsgWindowCloses);
    player.SendMessage(&close, BMessenger(), 0);
  });
  handle_signals(ring, SA_RESETHAND | SA_RESTART);
}

TEndSignals::~TEndSignals() {
  handle_signals(SIG_DFL, 0);
  close(bell.exchange(-1));
}
