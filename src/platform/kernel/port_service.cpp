#include "platform/kernel/port_service.h"

#include "platform/kernel/port_folder.h"
#include "platform/kernel/timed_wait.h"
#include "platform/kernel/wakeup_fd.h"
#include "platform/support/log.h"

#include <poll.h>
#include <sys/socket.h>

#include <algorithm>
#include <exception>
#include <list>
#include <map>
#include <mutex>
#include <utility>
#include <vector>

namespace port_service {

namespace {

constexpr size_t kMaxConnections = 256; // per port; more wait in the backlog of the socket
constexpr bigtime_t kPauseUs = 100000;  // after an error that would repeat at once

/** One port and its connections; on the service's thread once handed over. */
class ServedPort {
public:
  ServedPort(UniqueFd listener, std::shared_ptr<PortSink> sink)
      : fListener(std::move(listener)), fSink(std::move(sink)) {}

  void AddPolls(std::vector<pollfd>* polls) const {
    const bool accepts = fConnections.size() < kMaxConnections && fAcceptAfter == 0;
    polls->push_back({fListener.Get(), static_cast<short>(accepts ? POLLIN : 0), 0});
    for (const PortConnection& connection : fConnections) {
      polls->push_back({connection.Socket(), connection.AwaitedEvents(), 0});
    }
  }

  /** Handles the results of what `AddPolls` added; returns the first of the next port. */
  const pollfd* Handle(const pollfd* polled, bigtime_t now) {
    const bool isConnectionPending = (polled++->revents & POLLIN) != 0;
    if (now >= fAcceptAfter) fAcceptAfter = 0;
    for (PortConnection& connection : fConnections) {
      if (polled->revents != 0) connection.Handle(polled->revents);
      connection.LookAgain(now);
      ++polled;
    }
    DropEnded();
    if (isConnectionPending) Accept(now);
    return polled;
  }

  /** Adds up the bytes that the senders occupy, and finds the one of them that has been silent longest. */
  void Survey(size_t* held, PortConnection** quietest) {
    for (PortConnection& connection : fConnections) {
      if (connection.IsOver() || connection.HeldBytes() == 0) continue;
      *held += connection.HeldBytes();
      if (*quietest == nullptr || connection.LastHeard() < (*quietest)->LastHeard()) *quietest = &connection;
    }
  }
  void DropEnded() {
    fConnections.remove_if([](const PortConnection& connection) { return connection.IsOver(); });
  }

  bigtime_t Deadline() const {
    bigtime_t deadline = fAcceptAfter > 0 ? fAcceptAfter : B_INFINITE_TIMEOUT;
    for (const PortConnection& connection : fConnections) deadline = std::min(deadline, connection.Deadline());
    return deadline;
  }

private:
  void Accept(bigtime_t now) {
    UniqueFd socket(accept4(fListener.Get(), nullptr, nullptr, SOCK_CLOEXEC | SOCK_NONBLOCK));
    // Out of file descriptors accept() fails and poll() returns at once: pause accepting.
    fAcceptAfter = socket || errno == EAGAIN ? 0 : now + kPauseUs;
    if (socket && port_folder::is_same_user(socket.Get())) fConnections.emplace_back(std::move(socket), fSink);
  }

  UniqueFd fListener;
  std::shared_ptr<PortSink> fSink;
  std::list<PortConnection> fConnections;
  bigtime_t fAcceptAfter = 0;
};

using Ports = std::map<std::string, std::unique_ptr<ServedPort>>;

/** Never destroyed: ports are served while the process exits. */
struct Service {
  WakeupFd wakeup;
  /** Serializes opening and closing, which start and end the thread; guards thread, inodes. Never locked by the
      service's thread. */
  std::mutex control;
  thread_id thread = 0;
  /** Of the open ports, by name; see port_folder::Listener. */
  std::map<std::string, ino_t> inodes;

  std::mutex mutex; // guards opened, closed, ending: what the service's thread takes over
  Ports opened;
  std::vector<std::string> closed;
  bool ending = false;
};

Service& service() {
  static Service* const instance = new Service;
  return *instance;
}

/** Adds the opened ports and drops the closed ones; false when the thread is to end. */
bool take_changes(Ports* ports) {
  const std::lock_guard lock(service().mutex);
  for (const std::string& name : std::exchange(service().closed, {})) ports->erase(name);
  ports->merge(service().opened);
  return !service().ending;
}

void serve_once(const Ports& ports) {
  std::vector<pollfd> polls{{service().wakeup.Get(), POLLIN, 0}};
  bigtime_t deadline = B_INFINITE_TIMEOUT;
  for (const auto& [name, port] : ports) {
    port->AddPolls(&polls);
    deadline = std::min(deadline, port->Deadline());
  }
  if (poll(polls.data(), polls.size(), poll_timeout(deadline)) < 0) return;
  if (polls[0].revents != 0) service().wakeup.Clear();
  const bigtime_t now = system_time();
  const pollfd* polled = &polls[1];
  for (const auto& [name, port] : ports) polled = port->Handle(polled, now);
}

/** Enforces kMaxUnfinished. */
void disconnect_silent(const Ports& ports) {
  for (;;) {
    size_t held = 0;
    PortConnection* quietest = nullptr;
    for (const auto& [name, port] : ports) port->Survey(&held, &quietest);
    if (held <= kMaxUnfinished) return;
    static LimitedLog log;
    log.Error("ports", "cut off the sender of an unfinished message: there are too many of them");
    quietest->CutOff();
    for (const auto& [name, port] : ports) port->DropEnded();
  }
}

int32 serve(void*) {
  Ports ports;
  while (take_changes(&ports)) {
    try {
      serve_once(ports);
      disconnect_silent(ports);
    } catch (const std::exception& error) {
      log_error("ports", error.what());
      snooze(kPauseUs);
    }
  }
  return 0;
}

status_t start_thread() {
  {
    const std::lock_guard lock(service().mutex);
    service().ending = false;
    service().closed.clear();
  }
  service().thread = spawn_thread(serve, "ports", B_NORMAL_PRIORITY, nullptr);
  return resume_thread(service().thread);
}

} // namespace

status_t open(const std::string& name, std::shared_ptr<PortSink> sink) {
  if (!port_folder::is_port_name(name)) return B_BAD_VALUE;
  const std::lock_guard control(service().control);
  port_folder::Listener listener;
  if (const status_t status = port_folder::listen_as(name, &listener); status != B_OK) return status;
  const bool runs = !service().inodes.empty() || (service().wakeup.Get() >= 0 && start_thread() == B_OK);
  if (!runs) {
    port_folder::remove_name(name, listener.inode);
    return B_NO_MEMORY;
  }
  service().inodes[name] = listener.inode;
  {
    const std::lock_guard lock(service().mutex);
    service().opened[name] = std::make_unique<ServedPort>(std::move(listener.socket), std::move(sink));
  }
  look_again();
  return B_OK;
}

void close(const std::string& name) {
  const std::lock_guard control(service().control);
  const auto found = service().inodes.find(name);
  if (found == service().inodes.end()) return;
  port_folder::remove_name(name, found->second);
  service().inodes.erase(found);
  const bool isLast = service().inodes.empty();
  {
    const std::lock_guard lock(service().mutex);
    if (service().opened.erase(name) == 0) service().closed.push_back(name);
    service().ending = isLast;
  }
  look_again();
  if (isLast) wait_for_thread(service().thread, nullptr);
}

bool serves(const std::string& name) {
  const std::lock_guard control(service().control);
  return service().inodes.count(name) > 0;
}

void look_again() {
  service().wakeup.Wake();
}

} // namespace port_service
