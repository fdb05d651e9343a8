#pragma once

#include <chrono>
#include <optional>
#include <stop_token>
#include <string>
#include <vector>

/** What a helper program may use. */
struct THelperLimits {
  size_t outputBytes;
  std::chrono::seconds timeout;
};

struct THelperResult {
  int exitStatus = 0;
  std::string output;
};

/** Runs a helper program that is next to the running one, with these words as its command line, and `input` as its
    standard input; waits for its end. Nothing if it cannot be started, crashes, violates a limit, or is stopped: then
   it is killed. Thread-safe. */
std::optional<THelperResult> run_helper(std::vector<std::string> words, int input, const THelperLimits& limits,
                                        const std::stop_token& stop = {});
/** The same with no input. */
std::optional<THelperResult> run_helper(std::vector<std::string> words, const THelperLimits& limits,
                                        const std::stop_token& stop = {});
