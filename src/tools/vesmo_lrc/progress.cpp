#include "tools/vesmo_lrc/progress.h"

#include <unistd.h>

#include <cstdio>
#include <string>

namespace {

constexpr std::chrono::milliseconds kPatience{300};
constexpr std::chrono::milliseconds kInterval{100};
constexpr size_t kCells = 40;

} // namespace

TProgress::TProgress(size_t total, bool isWanted)
    : fTotal(total), fIsWanted(isWanted && total > 1 && isatty(STDERR_FILENO) == 1), fNext(Clock::now() + kPatience) {}

void TProgress::Show(size_t done) {
  if (!fIsWanted || Clock::now() < fNext) return;
  fNext = Clock::now() + kInterval;
  const size_t cells = done * kCells / fTotal;
  std::string bar(cells, '#');
  bar.resize(kCells, '.');
  std::fprintf(stderr, "\r[%s] %zu of %zu", bar.c_str(), done, fTotal);
  std::fflush(stderr);
  fIsShown = true;
}

void TProgress::Clear() {
  if (!fIsShown) return;
  std::fputs("\r\x1B[K", stderr);
  fIsShown = false;
}
