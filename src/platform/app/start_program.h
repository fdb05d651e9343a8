#pragma once

#include <future>
#include <optional>
#include <string>
#include <vector>

/** Starts a program, looked up in PATH, without a shell; does not wait for it. The future is ready when it has exited:
   true for exit code 0. The process is reaped in any case. nullopt when it could not be started. Thread-safe. */
std::optional<std::future<bool>> start_program(const std::vector<std::string>& arguments);
