#pragma once

#include <sys/resource.h>

#include <csignal>

/** Simulates a full disk: files of this process cannot grow beyond the limit. */
struct FullDisk {
  explicit FullDisk(rlim_t bytes) {
    getrlimit(RLIMIT_FSIZE, &fBefore);
    const rlimit limit{bytes, fBefore.rlim_max};
    setrlimit(RLIMIT_FSIZE, &limit);
    signal(SIGXFSZ, SIG_IGN);
  }
  ~FullDisk() {
    setrlimit(RLIMIT_FSIZE, &fBefore);
    signal(SIGXFSZ, SIG_DFL);
  }

private:
  rlimit fBefore{};
};
