#pragma once

#include "platform/support/types.h"

#include <functional>
#include <string>

/** Sends to other processes in the background what nobody here waits for. */
namespace outbox {

/** Calls `send` on a thread of the destination's own, after what was posted to it before, so that a process that has
    been stopped delays its own letters alone. Once a send has timed out, what else is queued for that destination is
    dropped. Never waits; B_WOULD_BLOCK when the destination has too many letters queued, or there are too many
    destinations. Any thread. */
status_t post(const std::string& destination, std::function<status_t()> send);

} // namespace outbox
