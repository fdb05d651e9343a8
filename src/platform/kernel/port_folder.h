#pragma once

#include "platform/kernel/unique_fd.h"
#include "platform/support/types.h"

#include <sys/types.h>

#include <string>
#include <vector>

/** The folder in which the processes of one user find each other's ports: each port is a Unix socket of its name. A
    folder that another user owns or can access is refused. Thread-safe. */
namespace port_folder {

/** A name is 1 to 80 bytes without '/' and control characters, and does not begin with a period. */
bool is_port_name(const std::string& name);

/** A listening socket. */
struct Listener {
  UniqueFd socket;
  ino_t inode = 0; // of its file in the folder
};

/** B_NAME_IN_USE when a living process listens under the name; a stale socket is replaced. Of several processes that
    try at the same moment one succeeds. B_PERMISSION_DENIED when the folder is not private. */
[[nodiscard]] status_t listen_as(const std::string& name, Listener* listener);
/** Removes the socket, unless another process has replaced it meanwhile. */
void remove_name(const std::string& name, ino_t inode);

/** Connects a blocking socket. B_NAME_NOT_FOUND when no living process listens under the name, B_PERMISSION_DENIED
    when the listener is another user's process. */
[[nodiscard]] status_t connect_to(const std::string& name, UniqueFd* socket);

/** The names of all ports, including those that crashed processes left. */
std::vector<std::string> names();

/** Whether the peer process runs as this user. */
bool is_same_user(int socket);

} // namespace port_folder
