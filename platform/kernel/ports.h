#pragma once

#include "platform/support/types.h"

#include <sys/types.h>

/** Named queues of flat messages (a code and bytes). A writer waits while `capacity` messages are queued;
    deleting a port wakes every waiter with B_BAD_PORT_ID. Ports of this process only: other processes do not see them.
 */
port_id create_port(int32 capacity, const char* name);
port_id find_port(const char* name);
status_t delete_port(port_id port);
status_t write_port(port_id port, int32 code, const void* bytes, size_t size);
status_t write_port_etc(port_id port, int32 code, const void* bytes, size_t size, bigtime_t timeout);
/** The size of the next message, waiting for one; or a negative status. */
ssize_t port_buffer_size(port_id port);
/** Reads the next message; what does not fit is lost. Returns the bytes read or a negative status. */
ssize_t read_port(port_id port, int32* code, void* buffer, size_t size);
ssize_t read_port_etc(port_id port, int32* code, void* buffer, size_t size, bigtime_t timeout);
int32 port_count(port_id port);
