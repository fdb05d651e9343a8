#pragma once

#include "platform/kernel/unique_fd.h"
#include "platform/support/types.h"

#include <sys/types.h>

#include <string>
#include <vector>

/** Where the ports of one user's programs meet: each named port is a socket of that name in a folder that only the user
    may enter. A folder that belongs to somebody else, or is open to others, is refused. Any thread. */
namespace port_folder {

/** A name is 1 to 80 bytes without '/' and control characters, and does not begin with a period. */
bool is_port_name(const std::string& name);

/** A socket that listens under its name. */
struct Listener {
  UniqueFd socket;
  ino_t inode = 0; // of its name
};

/** B_NAME_IN_USE when a living process listens there; the socket of one that is gone is replaced. Of several processes
    that try at the same moment one wins. B_PERMISSION_DENIED for a folder that is not the user's alone. */
status_t listen_as(const std::string& name, Listener* listener);
/** Takes the name away, unless another process has replaced it meanwhile. */
void remove_name(const std::string& name, ino_t inode);

/** A blocking socket, connected to whoever listens there: B_NAME_NOT_FOUND when nobody lives there,
    B_PERMISSION_DENIED when that is another user's process. */
status_t connect_to(const std::string& name, UniqueFd* socket);

/** Every name that a process has taken; those of crashed ones as well. */
std::vector<std::string> names();

/** Whether the process at the other end runs for this user. */
bool is_same_user(int socket);

} // namespace port_folder
