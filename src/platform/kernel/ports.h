#pragma once

#include "platform/support/types.h"

#include <sys/types.h>

/** Named bounded queues of messages (a code and bytes) between the processes of one user. A writer waits while
    `capacity` messages are queued; deleting a port wakes every waiter with B_BAD_PORT_ID. Only the process that created
    a port reads and deletes it; the port goes with the process. Thread-safe. */

/** The name is a file name of at most 80 bytes. B_NAME_IN_USE when a living process has a port of that name,
    B_PERMISSION_DENIED when the user has no private runtime folder. */
[[nodiscard]] port_id create_port(int32 capacity, const char* name);
/** A port of this process, else of another. B_NAME_NOT_FOUND when no living process has it. */
[[nodiscard]] port_id find_port(const char* name);
/** B_PERMISSION_DENIED for a port of another process. */
status_t delete_port(port_id port);
/** B_MESSAGE_TOO_LARGE above 16 MiB. For a timeout of 0: B_WOULD_BLOCK when there is no room. */
[[nodiscard]] status_t write_port(port_id port, int32 code, const void* bytes, size_t size);
[[nodiscard]] status_t write_port_etc(port_id port, int32 code, const void* bytes, size_t size, bigtime_t timeout);
/** The size of the next message, waiting for one; or a negative status. */
[[nodiscard]] ssize_t port_buffer_size(port_id port);
/** Reads the next message, waiting for one; what does not fit is lost. Returns the bytes read or a negative status. */
[[nodiscard]] ssize_t read_port(port_id port, int32* code, void* buffer, size_t size);
/** How many messages are queued in a port of this process; for tests. */
int32 port_count(port_id port);
