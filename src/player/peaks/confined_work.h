#pragma once

#include <sys/resource.h>

#include <functional>
#include <optional>
#include <string>
#include <vector>

/** What work on a stranger's file may use at most. */
struct TWorkLimits {
  rlim_t cpuSeconds;
  int wallSeconds;
  size_t resultBytes;
};

/** Runs `work` in a sandbox: a child process that keeps the `files` open for reading, its memory and its result, and
    nothing else; it reaches no other file, no network and no other process (player/peaks/system_calls.h). Returns the
    result; empty when the work broke a rule or a limit, threw, or crashed. The calling process has one thread. */
std::optional<std::string> confined_work(const std::vector<int>& files, const TWorkLimits& limits,
                                         const std::function<std::string()>& work);
