#include "platform/kernel/remote_port.h"

#include <map>

namespace remote_ports {

namespace {

constexpr port_id kFirstId = port_id{1} << 30; // far above the ids of this process's own ports

struct Table {
  std::mutex mutex;
  std::map<port_id, std::shared_ptr<RemotePort>> ports;
  port_id nextId = kFirstId;
};

Table& table() {
  static Table* const instance = new Table;
  return *instance;
}

port_id known(const std::string& name) {
  for (const auto& [id, port] : table().ports) {
    if (port->Name() == name) return id;
  }
  return B_NAME_NOT_FOUND;
}

} // namespace

bool is_remote(port_id id) {
  return id >= kFirstId;
}

port_id find(const std::string& name) {
  {
    const std::lock_guard lock(table().mutex);
    std::erase_if(table().ports, [](const auto& entry) { return !entry.second->IsAlive(); });
    if (const port_id id = known(name); id > 0) return id;
  }
  std::shared_ptr<RemotePort> port;
  if (const status_t status = RemotePort::Connect(name, &port); status != B_OK) return status;
  const std::lock_guard lock(table().mutex);
  if (const port_id id = known(name); id > 0) return id; // another thread was faster
  table().ports.emplace(table().nextId, port);
  return table().nextId++;
}

std::shared_ptr<RemotePort> get(port_id id) {
  const std::lock_guard lock(table().mutex);
  const auto found = table().ports.find(id);
  if (found == table().ports.end()) return nullptr;
  if (found->second->IsAlive()) return found->second;
  table().ports.erase(found);
  return nullptr;
}

} // namespace remote_ports
