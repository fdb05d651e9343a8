#pragma once

#include <linux/filter.h>

#include <optional>
#include <vector>

/** A seccomp filter as a BPF program. */
using TFilterProgram = std::vector<sock_filter>;

/** A filter that allows computing, using memory, and reading, writing and truncating open
    descriptors. Opening files, connecting
    and starting threads or processes fails with EACCES, since libraries try that and continue without; any other system
    call kills the process. No value, and a message on standard error, if the kernel does not support filters; an empty
    program if it could not be compiled. */
std::optional<TFilterProgram> computing_only();

/** Filters this thread irrevocably. Requires PR_SET_NO_NEW_PRIVS. False if nothing is filtered. */
[[nodiscard]] bool filter_system_calls(const TFilterProgram& program);
