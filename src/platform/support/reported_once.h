#pragma once

#include <string>

/** Errors that concern every image of the process alike, such as a file that each plug-in reads: only the image that
    meets the error first reports it. One error a kind is remembered. Thread-safe. */

/** True when this error is not the one last reported of its kind. */
[[nodiscard]] bool should_report(const std::string& kind, const std::string& error);

/** The error is over: the next one is reported, also when it is the same. */
void forget_reported(const std::string& kind);
