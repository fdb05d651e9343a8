#pragma once

#include "tests/faults/failing_calls.h"
#include "tests/support/long_tests.h"
#include "tests/support/testing.h"

#include <sys/wait.h>

#include <cerrno>
#include <cstdio>

constexpr int kMostCalls = 60;

struct Error {
  int number;
  const char* name;
};

/** The disk being full stands for the others in the quick run: the program treats all errors alike. */
inline std::vector<Error> errors() {
  if (!long_tests()) return {{ENOSPC, "ENOSPC"}};
  return {{ENOSPC, "ENOSPC"}, {EIO, "EIO"}, {EROFS, "EROFS"}, {EDQUOT, "EDQUOT"}, {EACCES, "EACCES"}};
}

/** A row of the table that ./test --long prints. */
inline void report(const std::string& what, int call, const std::string& name, const char* error,
                   const std::string& outcome) {
  if (long_tests()) std::printf("| %s | %d %s | %s | %s |\n", what.c_str(), call, name.c_str(), error, outcome.c_str());
}

/** Runs in a child process that ends itself at that call; false when it made fewer. */
inline bool killed_at(int call, const std::string& folder, const std::function<void()>& act) {
  const pid_t child = fork();
  if (child == 0) {
    failing_calls::arm(folder, call, 0, failing_calls::Fate::kKills);
    act();
    _exit(0);
  }
  int status = 0;
  EXPECT_EQ(waitpid(child, &status, 0), child);
  EXPECT_TRUE(WIFEXITED(status));
  return WEXITSTATUS(status) != 0;
}
