#include "platform/support/log.h"

#include <unistd.h>

#include <string>

void log_error(std::string_view where, std::string_view what) {
  std::string line("sonivo: ");
  line.append(where).append(": ").append(what).append("\n");
  // One write, so that lines of several threads never mix; there is nobody to tell when it fails.
  [[maybe_unused]] const ssize_t written = write(STDERR_FILENO, line.data(), line.size());
}
