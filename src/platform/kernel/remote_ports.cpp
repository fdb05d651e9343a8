#include "platform/kernel/id_table.h"
#include "platform/kernel/remote_port.h"

namespace remote_ports {

namespace {

constexpr port_id kFirstId = port_id{1} << 30; // far above the ids of this process's own ports

/** Never destroyed: threads may outlive main. */
IdTable<RemotePort>& table() {
  static auto* const instance = new IdTable<RemotePort>(kFirstId);
  return *instance;
}

} // namespace

bool is_remote(port_id id) {
  return id >= kFirstId;
}

port_id find(const std::string& name) {
  const auto hasName = [&name](const RemotePort& port) { return port.Name() == name; };
  table().RemoveIf([](const RemotePort& port) { return !port.IsAlive(); });
  if (const port_id id = table().Find(hasName); id > 0) return id;
  std::shared_ptr<RemotePort> port;
  if (const status_t status = RemotePort::Connect(name, &port); status != B_OK) return status;
  return table().FindOrAdd(port, hasName); // another thread may have been faster
}

std::shared_ptr<RemotePort> get(port_id id) {
  auto port = table().Get(id);
  if (port && !port->IsAlive()) {
    table().Remove(id);
    return nullptr;
  }
  return port;
}

} // namespace remote_ports
