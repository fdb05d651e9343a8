#pragma once

#include <string>

/** Deduplicates errors that concern every image of the process, such as a file that each plug-in reads: only the first
    image reports it. Thread-safe. */

/** False when this error is the last one reported of its kind. */
[[nodiscard]] bool should_report(const std::string& kind, const std::string& error);

/** Call when the error is gone: the next one is reported even if it is the same. */
void forget_reported(const std::string& kind);
