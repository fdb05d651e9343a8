#include "platform/kernel/ports.h"

#include "platform/kernel/bounded_queue.h"
#include "platform/kernel/id_table.h"
#include "platform/kernel/remote_port.h"

#include <algorithm>
#include <cstring>
#include <string>
#include <vector>

namespace {

struct Item {
  int32 code = 0;
  std::vector<char> bytes;
};

struct Port : PortSink {
  Port(std::string portName, size_t capacity) : name(std::move(portName)), queue(capacity) {}

  status_t Offer(PortFrame* frame, const std::shared_ptr<PortReturn>&) override {
    return queue.Offer([frame] { return Item{frame->code, std::move(frame->bytes)}; });
  }

  const std::string name;
  BoundedQueue<Item> queue;
};

/** The ports of this process. Never destroyed: threads may outlive main. */
IdTable<Port>& ports() {
  static auto* const instance = new IdTable<Port>;
  return *instance;
}

} // namespace

port_id create_port(int32 capacity, const char* name) {
  if (capacity < 1 || name == nullptr) return B_BAD_VALUE;
  const auto port = std::make_shared<Port>(name, static_cast<size_t>(capacity));
  const status_t status = port_service::open(name, port);
  return status == B_OK ? ports().Add(port) : status;
}

port_id find_port(const char* name) {
  if (name == nullptr) return B_BAD_VALUE;
  const port_id own = ports().Find([name](const Port& port) { return port.name == name; });
  return own > 0 ? own : remote_ports::find(name);
}

status_t delete_port(port_id id) {
  if (remote_ports::is_remote(id)) return B_PERMISSION_DENIED;
  const auto port = ports().Remove(id);
  if (!port) return B_BAD_PORT_ID;
  port->queue.Close();
  port_service::close(port->name);
  return B_OK;
}

status_t write_port(port_id port, int32 code, const void* bytes, size_t size) {
  return write_port_etc(port, code, bytes, size, B_INFINITE_TIMEOUT);
}

status_t write_port_etc(port_id id, int32 code, const void* bytes, size_t size, bigtime_t timeout) {
  if (size > kMaxPortMessage) return B_MESSAGE_TOO_LARGE;
  const char* const start = static_cast<const char*>(bytes);
  if (remote_ports::is_remote(id)) {
    const auto remote = remote_ports::get(id);
    return remote ? remote->Send(code, {start, size}, timeout) : B_BAD_PORT_ID;
  }
  const auto port = ports().Get(id);
  return port ? port->queue.Push({code, {start, start + size}}, timeout) : B_BAD_PORT_ID;
}

ssize_t port_buffer_size(port_id id) {
  const auto port = ports().Get(id);
  if (!port) return B_BAD_PORT_ID;
  size_t size = 0;
  const status_t status = port->queue.Peek([&](const Item& item) { size = item.bytes.size(); });
  return status == B_OK ? static_cast<ssize_t>(size) : status;
}

ssize_t read_port(port_id id, int32* code, void* buffer, size_t size) {
  const auto port = ports().Get(id);
  if (!port) return B_BAD_PORT_ID;
  Item item;
  if (const status_t status = port->queue.Pop(&item, B_INFINITE_TIMEOUT); status != B_OK) return status;
  const size_t count = std::min(size, item.bytes.size());
  if (count > 0) std::memcpy(buffer, item.bytes.data(), count);
  if (code) *code = item.code;
  return static_cast<ssize_t>(count);
}

int32 port_count(port_id id) {
  const auto port = ports().Get(id);
  return port ? static_cast<int32>(port->queue.Count()) : B_BAD_PORT_ID;
}
