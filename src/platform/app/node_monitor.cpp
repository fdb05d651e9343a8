#include "platform/app/node_monitor.h"

#include "platform/app/message.h"
#include "platform/app/messenger.h"
#include "platform/storage/status_of.h"
#include "platform/support/log.h"

#include <sys/inotify.h>
#include <sys/stat.h>
#include <unistd.h>

#include <cerrno>
#include <exception>
#include <map>
#include <mutex>
#include <string>
#include <thread>
#include <vector>

namespace {

constexpr uint32_t kSelfEvents = IN_MODIFY | IN_CLOSE_WRITE | IN_ATTRIB | IN_DELETE_SELF | IN_MOVE_SELF;
constexpr uint32_t kFolderEvents = IN_CREATE | IN_DELETE | IN_MOVED_FROM | IN_MOVED_TO;
/** How long to wait for a full queue: the notice may be the last. */
constexpr bigtime_t kPatienceUs = 1000000;

struct Watcher {
  const BHandler* handler; // compared only
  BMessenger target;
  uint32 flags;
};

/** A watched node, with the state that distinguishes a change of contents from one of attributes. */
struct Node {
  std::string path;
  struct stat state {};
  std::vector<Watcher> watchers;
};

bool same_state(const struct stat& left, const struct stat& right) {
  return left.st_mtim.tv_sec == right.st_mtim.tv_sec && left.st_mtim.tv_nsec == right.st_mtim.tv_nsec &&
         left.st_size == right.st_size && left.st_mode == right.st_mode && left.st_uid == right.st_uid &&
         left.st_gid == right.st_gid && left.st_nlink == right.st_nlink;
}

/** All watches of the process, served by one thread that starts with the first. Thread-safe. Never destroyed: the
   thread outlives main. */
class NodeMonitor {
public:
  status_t Watch(const char* path, uint32 flags, const BHandler* handler);
  void Stop(const BHandler* handler);

private:
  void Serve();
  void Handle(const inotify_event& event);
  void NotifyAll();
  int32 OpcodeOf(const inotify_event& event, Node* node);

  const int fInotify = inotify_init1(IN_CLOEXEC);
  std::mutex fMutex; // guards fNodes and fServes
  std::map<int, Node> fNodes;
  bool fServes = false;
};

status_t NodeMonitor::Watch(const char* path, uint32 flags, const BHandler* handler) {
  const std::lock_guard lock(fMutex);
  const int watch = inotify_add_watch(fInotify, path, kSelfEvents | kFolderEvents);
  if (watch < 0) {
    const status_t status = status_of_errno(errno);
    if (status != B_ENTRY_NOT_FOUND) log_error(path, "cannot be watched for changes");
    return status;
  }
  Node& node = fNodes[watch];
  node.path = path;
  stat(path, &node.state);
  node.watchers.push_back({handler, BMessenger(handler), flags});
  if (!fServes) std::thread(&NodeMonitor::Serve, this).detach();
  fServes = true;
  return B_OK;
}

void NodeMonitor::Stop(const BHandler* handler) {
  const std::lock_guard lock(fMutex);
  for (auto node = fNodes.begin(); node != fNodes.end();) {
    std::erase_if(node->second.watchers, [handler](const Watcher& watcher) { return watcher.handler == handler; });
    if (!node->second.watchers.empty()) {
      ++node;
      continue;
    }
    inotify_rm_watch(fInotify, node->first);
    node = fNodes.erase(node);
  }
}

void NodeMonitor::Serve() {
  alignas(inotify_event) char buffer[16384];
  for (;;) {
    const ssize_t size = read(fInotify, buffer, sizeof buffer);
    if (size < 0 && errno == EINTR) continue;
    if (size <= 0) return;
    for (ssize_t at = 0; at < size;) {
      const auto& event = *reinterpret_cast<const inotify_event*>(buffer + at);
      try {
        if (event.mask & IN_Q_OVERFLOW)
          NotifyAll();
        else
          Handle(event);
      } catch (const std::exception& error) {
        log_error("node monitor", error.what());
      }
      at += static_cast<ssize_t>(sizeof event + event.len);
    }
  }
}

/** 0 for an event that is not reported. */
int32 NodeMonitor::OpcodeOf(const inotify_event& event, Node* node) {
  if (event.mask & IN_CREATE) return B_ENTRY_CREATED;
  if (event.mask & (IN_DELETE | IN_DELETE_SELF)) return B_ENTRY_REMOVED;
  if (event.mask & (IN_MOVED_FROM | IN_MOVED_TO | IN_MOVE_SELF)) return B_ENTRY_MOVED;
  // Changes of a folder's files are reported to the watches of those files.
  if (event.len > 0 || !(event.mask & kSelfEvents)) return 0;
  struct stat now {};
  if (stat(node->path.c_str(), &now) != 0) return 0; // its removal is an event of its own
  const bool isAttribute = (event.mask & IN_ATTRIB) && same_state(now, node->state);
  node->state = now;
  return isAttribute ? B_ATTR_CHANGED : B_STAT_CHANGED;
}

void send_notice(const std::vector<Watcher>& watchers, int32 opcode, const char* name) {
  BMessage notice(B_NODE_MONITOR);
  notice.AddInt32("opcode", opcode);
  if (name) notice.AddString("name", name);
  const uint32 wanted = opcode == B_STAT_CHANGED   ? uint32{B_WATCH_STAT}
                        : opcode == B_ATTR_CHANGED ? uint32{B_WATCH_ATTR}
                                                   : uint32{B_WATCH_NAME | B_WATCH_DIRECTORY};
  for (const Watcher& watcher : watchers)
    if (watcher.flags & wanted) watcher.target.SendMessage(&notice, BMessenger(), kPatienceUs);
}

void NodeMonitor::Handle(const inotify_event& event) {
  std::vector<Watcher> watchers;
  int32 opcode = 0;
  {
    const std::lock_guard lock(fMutex);
    const auto node = fNodes.find(event.wd);
    if (node == fNodes.end()) return;
    opcode = OpcodeOf(event, &node->second);
    watchers = node->second.watchers;
    if (event.mask & IN_IGNORED) fNodes.erase(node);
  }
  if (opcode != 0) send_notice(watchers, opcode, event.len > 0 ? event.name : nullptr);
}

/** The kernel's queue overflowed: anything may have happened, every watcher has to look again. */
void NodeMonitor::NotifyAll() {
  std::vector<Watcher> watchers;
  {
    const std::lock_guard lock(fMutex);
    for (auto& [watch, node] : fNodes) {
      stat(node.path.c_str(), &node.state);
      watchers.insert(watchers.end(), node.watchers.begin(), node.watchers.end());
    }
  }
  send_notice(watchers, B_STAT_CHANGED, nullptr);
  std::erase_if(watchers, [](const Watcher& watcher) { return (watcher.flags & B_WATCH_STAT) != 0; });
  send_notice(watchers, B_ENTRY_MOVED, nullptr);
}

NodeMonitor& monitor() {
  static NodeMonitor* const instance = new NodeMonitor;
  return *instance;
}

} // namespace

status_t watch_node(const char* path, uint32 flags, const BHandler* handler) {
  return monitor().Watch(path, flags, handler);
}

status_t stop_watching(const BHandler* handler) {
  monitor().Stop(handler);
  return B_OK;
}
