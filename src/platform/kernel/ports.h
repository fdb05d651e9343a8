#pragma once

#include "platform/support/types.h"

#include <sys/types.h>

/** Named queues of flat messages (a code and bytes), for all programs of one user. A writer, in whatever process, waits
    while `capacity` messages are queued; deleting a port wakes every waiter with B_BAD_PORT_ID. The process that made a
    port reads and deletes it; it is gone when that process is. Any thread. */

/** The name is one file name of at most 80 bytes. B_NAME_IN_USE when a living process has a port of that name,
    B_PERMISSION_DENIED where the user has no folder that is closed to others. */
port_id create_port(int32 capacity, const char* name);
/** A port of this process, else one of another. B_NAME_NOT_FOUND when nobody living has it. */
port_id find_port(const char* name);
/** B_PERMISSION_DENIED for a port of another process. */
status_t delete_port(port_id port);
/** B_MESSAGE_TOO_LARGE above 16 MiB. For a timeout of 0: B_WOULD_BLOCK when there is no room. */
status_t write_port(port_id port, int32 code, const void* bytes, size_t size);
status_t write_port_etc(port_id port, int32 code, const void* bytes, size_t size, bigtime_t timeout);
/** The size of the next message, waiting for one; or a negative status. */
ssize_t port_buffer_size(port_id port);
/** Reads the next message; what does not fit is lost. Returns the bytes read or a negative status. */
ssize_t read_port(port_id port, int32* code, void* buffer, size_t size);
ssize_t read_port_etc(port_id port, int32* code, void* buffer, size_t size, bigtime_t timeout);
int32 port_count(port_id port);
