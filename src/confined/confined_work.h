#pragma once

#include <sys/resource.h>

#include <functional>
#include <optional>
#include <string>
#include <vector>

/** Resource limits for work on an untrusted file. */
struct TWorkLimits {
  rlim_t cpuSeconds;
  int wallSeconds;
  size_t resultBytes;
  rlim_t fileBytes = 0; // the largest size to which it may write one of its files
};

/** Runs `work` in a sandbox: a child process that can access the descriptors `files`, its memory and its result, but no
    other file, no network and no other process (confined/system_calls.h). Returns the result; empty if the work
    violated the filter or a limit, threw, or crashed. The calling process must be single-threaded. */
std::optional<std::string> confined_work(const std::vector<int>& files, const TWorkLimits& limits,
                                         const std::function<std::string()>& work);
