#include "platform/kernel/ports.h"

#include "platform/kernel/port_service.h"
#include "platform/kernel/remote_port.h"

#include <algorithm>
#include <chrono>
#include <condition_variable>
#include <cstring>
#include <deque>
#include <map>
#include <memory>
#include <mutex>
#include <string>
#include <utility>
#include <vector>

namespace {

struct Item {
  int32 code;
  std::vector<char> bytes;
};

struct Port : PortSink {
  std::string name;
  size_t capacity;
  std::mutex mutex;
  std::condition_variable changed;
  std::deque<Item> items;
  bool deleted = false;
  bool othersWait = false; // another process wants to be told of room

  template <typename Ready>
  status_t Wait(std::unique_lock<std::mutex>* lock, bigtime_t timeout, Ready ready) {
    const auto done = [&] { return deleted || ready(); };
    if (timeout == B_INFINITE_TIMEOUT) {
      changed.wait(*lock, done);
    } else if (!changed.wait_for(*lock, std::chrono::microseconds(timeout), done)) {
      return timeout == 0 ? B_WOULD_BLOCK : B_TIMED_OUT;
    }
    return deleted ? B_BAD_PORT_ID : B_OK;
  }

  status_t Offer(PortFrame* frame, const std::shared_ptr<PortReturn>&) override {
    {
      const std::lock_guard lock(mutex);
      if (deleted) return B_BAD_PORT_ID;
      othersWait = items.size() >= capacity;
      if (othersWait) return B_WOULD_BLOCK;
      items.push_back({frame->code, std::move(frame->bytes)});
    }
    changed.notify_all();
    return B_OK;
  }

  Item TakeFirst() {
    Item item = std::move(items.front());
    items.pop_front();
    if (std::exchange(othersWait, false)) port_service::look_again();
    return item;
  }
};

struct Table {
  std::mutex mutex;
  std::map<port_id, std::shared_ptr<Port>> ports;
  port_id lastId = 0;
};

Table& table() {
  static Table* const instance = new Table;
  return *instance;
}

std::shared_ptr<Port> port_of(port_id id) {
  const std::lock_guard lock(table().mutex);
  const auto found = table().ports.find(id);
  return found == table().ports.end() ? nullptr : found->second;
}

} // namespace

port_id create_port(int32 capacity, const char* name) {
  if (capacity < 1 || name == nullptr) return B_BAD_VALUE;
  const auto port = std::make_shared<Port>();
  port->name = name;
  port->capacity = static_cast<size_t>(capacity);
  if (const status_t status = port_service::open(name, port); status != B_OK) return status;
  const std::lock_guard lock(table().mutex);
  table().ports.emplace(++table().lastId, port);
  return table().lastId;
}

port_id find_port(const char* name) {
  if (name == nullptr) return B_BAD_VALUE;
  {
    const std::lock_guard lock(table().mutex);
    for (const auto& [id, port] : table().ports) {
      if (port->name == name) return id;
    }
  }
  return remote_ports::find(name);
}

status_t delete_port(port_id id) {
  if (remote_ports::is_remote(id)) return B_PERMISSION_DENIED;
  std::shared_ptr<Port> port;
  {
    const std::lock_guard lock(table().mutex);
    auto taken = table().ports.extract(id);
    if (taken.empty()) return B_BAD_PORT_ID;
    port = std::move(taken.mapped());
  }
  {
    const std::lock_guard lock(port->mutex);
    port->deleted = true;
  }
  port->changed.notify_all();
  port_service::close(port->name);
  return B_OK;
}

status_t write_port(port_id port, int32 code, const void* bytes, size_t size) {
  return write_port_etc(port, code, bytes, size, B_INFINITE_TIMEOUT);
}

status_t write_port_etc(port_id id, int32 code, const void* bytes, size_t size, bigtime_t timeout) {
  if (size > kMaxPortMessage) return B_MESSAGE_TOO_LARGE;
  const char* start = static_cast<const char*>(bytes);
  if (remote_ports::is_remote(id)) {
    const auto remote = remote_ports::get(id);
    return remote ? remote->Send(code, {start, size}, timeout) : B_BAD_PORT_ID;
  }
  const auto port = port_of(id);
  if (!port) return B_BAD_PORT_ID;
  {
    std::unique_lock lock(port->mutex);
    const status_t status = port->Wait(&lock, timeout, [&] { return port->items.size() < port->capacity; });
    if (status != B_OK) return status;
    port->items.push_back({code, {start, start + size}});
  }
  port->changed.notify_all();
  return B_OK;
}

ssize_t port_buffer_size(port_id id) {
  const auto port = port_of(id);
  if (!port) return B_BAD_PORT_ID;
  std::unique_lock lock(port->mutex);
  const status_t status = port->Wait(&lock, B_INFINITE_TIMEOUT, [&] { return !port->items.empty(); });
  return status == B_OK ? static_cast<ssize_t>(port->items.front().bytes.size()) : status;
}

ssize_t read_port(port_id port, int32* code, void* buffer, size_t size) {
  return read_port_etc(port, code, buffer, size, B_INFINITE_TIMEOUT);
}

ssize_t read_port_etc(port_id id, int32* code, void* buffer, size_t size, bigtime_t timeout) {
  const auto port = port_of(id);
  if (!port) return B_BAD_PORT_ID;
  Item item;
  {
    std::unique_lock lock(port->mutex);
    const status_t status = port->Wait(&lock, timeout, [&] { return !port->items.empty(); });
    if (status != B_OK) return status;
    item = port->TakeFirst();
  }
  port->changed.notify_all();
  const size_t count = std::min(size, item.bytes.size());
  if (count > 0) std::memcpy(buffer, item.bytes.data(), count);
  if (code) *code = item.code;
  return static_cast<ssize_t>(count);
}

int32 port_count(port_id id) {
  const auto port = port_of(id);
  if (!port) return B_BAD_PORT_ID;
  const std::lock_guard lock(port->mutex);
  return static_cast<int32>(port->items.size());
}
