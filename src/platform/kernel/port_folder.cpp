#include "platform/kernel/port_folder.h"

#include "platform/support/log.h"

#include <fcntl.h>
#include <sys/file.h>
#include <sys/socket.h>
#include <sys/stat.h>
#include <sys/un.h>
#include <unistd.h>

#include <cerrno>
#include <chrono>
#include <cstdlib>
#include <cstring>
#include <filesystem>
#include <mutex>
#include <thread>

namespace port_folder {

namespace {

constexpr size_t kMaxName = 80;
constexpr int kBacklog = 128;
constexpr int kLockTries = 2000; // of a millisecond each
constexpr timeval kConnectTimeout = {1, 0};

std::string folder_path() {
  const char* const runtime = std::getenv("XDG_RUNTIME_DIR");
  struct stat info {};
  if (runtime && runtime[0] == '/' && stat(runtime, &info) == 0 && S_ISDIR(info.st_mode)) {
    return std::string(runtime) + "/koreva";
  }
  const char* const temporary = std::getenv("TMPDIR");
  return std::string(temporary && temporary[0] == '/' ? temporary : "/tmp") + "/koreva-" + std::to_string(geteuid());
}

void log_once(const std::string& path, const char* what) {
  static std::once_flag isLogged;
  std::call_once(isLogged, [&] { log_error(path, what); });
}

status_t open_folder(UniqueFd* folder) {
  const std::string path = folder_path();
  mkdir(path.c_str(), 0700); // may exist already; its owner and mode are checked below
  UniqueFd opened(open(path.c_str(), O_RDONLY | O_DIRECTORY | O_NOFOLLOW | O_CLOEXEC));
  struct stat info {};
  if (!opened || fstat(opened.Get(), &info) != 0) {
    log_once(path, "cannot be opened as a folder; programs do not find each other");
    return B_PERMISSION_DENIED;
  }
  if (info.st_uid != geteuid() || (info.st_mode & 0077) != 0) {
    log_once(path, "belongs to another user or is open to others; programs do not find each other");
    return B_PERMISSION_DENIED;
  }
  *folder = std::move(opened);
  return B_OK;
}

/** Addresses the socket through the open descriptor of the checked folder: the folder's path may have changed since, or
    be too long for an address. */
sockaddr_un address_in(const UniqueFd& folder, const std::string& name) {
  sockaddr_un address{};
  address.sun_family = AF_UNIX;
  const std::string path = "/proc/self/fd/" + std::to_string(folder.Get()) + "/" + name;
  std::memcpy(address.sun_path, path.c_str(), std::min(path.size(), sizeof address.sun_path - 1));
  return address;
}

UniqueFd new_socket() {
  return UniqueFd(socket(AF_UNIX, SOCK_STREAM | SOCK_CLOEXEC, 0));
}

/** Serializes the naming of ports between processes and threads; released when the folder is closed. */
bool lock_folder(const UniqueFd& folder) {
  for (int i = 0; i < kLockTries; ++i) {
    if (flock(folder.Get(), LOCK_EX | LOCK_NB) == 0) return true;
    std::this_thread::sleep_for(std::chrono::milliseconds(1));
  }
  return false;
}

status_t connect_in(const UniqueFd& folder, const std::string& name, UniqueFd* connected) {
  UniqueFd socket = new_socket();
  if (!socket) return B_NO_MEMORY;
  // A stopped process does not accept: limit the wait.
  setsockopt(socket.Get(), SOL_SOCKET, SO_SNDTIMEO, &kConnectTimeout, sizeof kConnectTimeout);
  const sockaddr_un address = address_in(folder, name);
  if (connect(socket.Get(), reinterpret_cast<const sockaddr*>(&address), sizeof address) != 0) {
    return errno == EAGAIN ? B_TIMED_OUT : B_NAME_NOT_FOUND;
  }
  *connected = std::move(socket);
  return B_OK;
}

status_t bind_in(const UniqueFd& folder, const std::string& name, Listener* listener) {
  UniqueFd socket = new_socket();
  const sockaddr_un address = address_in(folder, name);
  struct stat info {};
  if (!socket || bind(socket.Get(), reinterpret_cast<const sockaddr*>(&address), sizeof address) != 0 ||
      listen(socket.Get(), kBacklog) != 0 || fstatat(folder.Get(), name.c_str(), &info, AT_SYMLINK_NOFOLLOW) != 0) {
    return B_IO_ERROR;
  }
  fcntl(socket.Get(), F_SETFL, O_NONBLOCK);
  *listener = {std::move(socket), info.st_ino};
  return B_OK;
}

} // namespace

bool is_port_name(const std::string& name) {
  if (name.empty() || name.size() > kMaxName || name.front() == '.') return false;
  for (const char c : name) {
    if (c == '/' || static_cast<unsigned char>(c) < 0x20 || c == 0x7f) return false;
  }
  return true;
}

status_t listen_as(const std::string& name, Listener* listener) {
  UniqueFd folder;
  if (const status_t status = open_folder(&folder); status != B_OK) return status;
  if (!lock_folder(folder)) return B_TIMED_OUT;
  UniqueFd other;
  if (connect_in(folder, name, &other) != B_NAME_NOT_FOUND) return B_NAME_IN_USE;
  unlinkat(folder.Get(), name.c_str(), 0); // a crashed process may have left it
  return bind_in(folder, name, listener);
}

void remove_name(const std::string& name, ino_t inode) {
  UniqueFd folder;
  struct stat info {};
  if (open_folder(&folder) != B_OK || fstatat(folder.Get(), name.c_str(), &info, AT_SYMLINK_NOFOLLOW) != 0) return;
  if (info.st_ino == inode) unlinkat(folder.Get(), name.c_str(), 0);
}

status_t connect_to(const std::string& name, UniqueFd* socket) {
  if (!is_port_name(name)) return B_NAME_NOT_FOUND; // untrusted: names come from other processes, too
  UniqueFd folder;
  if (const status_t status = open_folder(&folder); status != B_OK) return status;
  UniqueFd connected;
  if (const status_t status = connect_in(folder, name, &connected); status != B_OK) return status;
  if (!is_same_user(connected.Get())) return B_PERMISSION_DENIED;
  *socket = std::move(connected);
  return B_OK;
}

std::vector<std::string> names() {
  std::vector<std::string> found;
  UniqueFd folder;
  if (open_folder(&folder) != B_OK) return found;
  const std::string path = "/proc/self/fd/" + std::to_string(folder.Get());
  std::error_code failure;
  for (auto entry = std::filesystem::directory_iterator(path, failure);
       !failure && entry != std::filesystem::directory_iterator(); entry.increment(failure)) {
    found.push_back(entry->path().filename().string());
  }
  return found;
}

bool is_same_user(int socket) {
  ucred peer{};
  socklen_t size = sizeof peer;
  return getsockopt(socket, SOL_SOCKET, SO_PEERCRED, &peer, &size) == 0 && peer.uid == geteuid();
}

} // namespace port_folder
