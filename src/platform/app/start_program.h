#pragma once

#include <future>
#include <optional>
#include <string>
#include <vector>

/** Starts a program, looked up in PATH, without a shell and without waiting for it. The future tells when it has
    exited, and whether with exit code 0; the process is reaped whether or not anybody asks. nullopt when it could not
   be started. Any thread. */
std::optional<std::future<bool>> start_program(const std::vector<std::string>& arguments);
