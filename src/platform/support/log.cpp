#include "platform/support/log.h"

#include <sys/uio.h>
#include <unistd.h>

#include <array>
#include <string>

namespace {

iovec piece(std::string_view text) {
  return {const_cast<char*>(text.data()), text.size()};
}

} // namespace

void log_error(std::string_view where, std::string_view what) noexcept {
  const std::array<iovec, 5> line = {piece("sonivo: "), piece(where), piece(": "), piece(what), piece("\n")};
  // One write is atomic for threads; an error cannot be reported anywhere.
  [[maybe_unused]] const ssize_t written = writev(STDERR_FILENO, line.data(), line.size());
}

void LimitedLog::Error(std::string_view where, std::string_view what) {
  const auto now = std::chrono::steady_clock::now();
  std::string line(what);
  {
    const std::lock_guard lock(fMutex);
    if (now < fQuietUntil) {
      ++fLeftOut;
      return;
    }
    fQuietUntil = now + kQuiet;
    if (fLeftOut > 0) line += "; " + std::to_string(fLeftOut) + " more of this kind before it";
    fLeftOut = 0;
  }
  log_error(where, line);
}
