#pragma once

#include <linux/filter.h>

#include <optional>
#include <vector>

/** A filter of system calls in the kernel's form. */
using TFilterProgram = std::vector<sock_filter>;

/** Lets a thread compute, use its memory, and read and write what is open. What opens a file, connects, or starts a
   thread or a process fails with EACCES, since libraries try it and go on without; any other system call ends the
   process. Nothing, said on standard error, where the kernel has no filters; empty when this one could not be made. */
std::optional<TFilterProgram> computing_only();

/** For this thread, for good. The process has given up gaining rights before. False when nothing is filtered now. */
[[nodiscard]] bool filter_system_calls(const TFilterProgram& program);
