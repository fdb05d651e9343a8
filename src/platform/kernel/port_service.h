#pragma once

#include "platform/kernel/port_connection.h"

#include <memory>
#include <string>

/** Serves all ports of this process that others may write to, on one thread, which lives while there are any. */
namespace port_service {

/** B_BAD_VALUE for a name that is none, B_NAME_IN_USE, B_PERMISSION_DENIED; see port_folder. Any thread. */
status_t open(const std::string& name, std::shared_ptr<PortSink> sink);
/** Nobody finds the port any more, and those connected to it hear that it is gone. Any thread but the service's. */
void close(const std::string& name);
/** Whether the port is one of this process. Any thread. */
bool serves(const std::string& name);
/** There may be room where there was none. Any thread; never waits. */
void look_again();

} // namespace port_service
