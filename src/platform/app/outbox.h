#pragma once

#include "platform/support/types.h"

#include <functional>
#include <string>

/** Sends fire-and-forget messages to other processes in the background. */
namespace outbox {

/** Calls `send` in FIFO order on a thread of the destination, so that a stopped process delays only its own letters.
    After a send that timed out, the other letters to that destination are dropped. Does not block; B_WOULD_BLOCK when
    the destination has too many letters queued, or there are too many destinations. Thread-safe. */
[[nodiscard]] status_t post(const std::string& destination, std::function<status_t()> send);

} // namespace outbox
