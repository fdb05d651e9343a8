#pragma once

#include "platform/kernel/port_connection.h"

#include <memory>
#include <string>

/** Serves the ports of this process, to which others may write, on one thread, which runs while there are any. */
namespace port_service {

/** B_BAD_VALUE for an invalid name, B_NAME_IN_USE, B_PERMISSION_DENIED; see port_folder. Any thread. */
[[nodiscard]] status_t open(const std::string& name, std::shared_ptr<PortSink> sink);
/** Removes the port and disconnects its senders. Blocks; any thread but the service's. */
void close(const std::string& name);
/** Whether the port belongs to this process. Any thread. */
bool serves(const std::string& name);
/** Wakes the service: there may be room where there was none. Any thread; does not block. */
void look_again();

} // namespace port_service
