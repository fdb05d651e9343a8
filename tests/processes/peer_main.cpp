/** The other process of a test. Reads orders from standard input, a line each, and answers each with one line:
      port NAME CAPACITY         makes a port: a status
      read NAME                  the code and the bytes of its next message, waiting for one
      delete NAME                deletes a port: a status
      write NAME TEXT TIMEOUT    writes to a port: a status
      find NAME                  whether there is such a port
      write-many NAME COUNT      writes that often, waiting for room: the last status
      read-many NAME COUNT       reads that often: how many came in order */

#include "platform/kernel/ports.h"

#include <array>
#include <iostream>
#include <sstream>
#include <string>

namespace {

std::string status_name(status_t status) {
  switch (status) {
  case B_NAME_IN_USE:
    return "in use";
  case B_PERMISSION_DENIED:
    return "denied";
  case B_BAD_PORT_ID:
    return "gone";
  case B_TIMED_OUT:
    return "timed out";
  case B_WOULD_BLOCK:
    return "would block";
  default:
    return status >= 0 ? "ok" : "failed";
  }
}

std::string read_one(port_id port) {
  std::array<char, 256> bytes{};
  int32 code = 0;
  const ssize_t count = read_port(port, &code, bytes.data(), bytes.size());
  if (count < 0) return status_name(static_cast<status_t>(count));
  return std::to_string(code) + " " + std::string(bytes.data(), static_cast<size_t>(count));
}

status_t write_many(port_id port, int32 count) {
  status_t status = B_OK;
  for (int32 i = 0; i < count && status == B_OK; ++i) status = write_port(port, i, &i, sizeof i);
  return status;
}

int32 read_many(port_id port, int32 count) {
  int32 inOrder = 0;
  for (int32 i = 0; i < count; ++i) {
    int32 code = 0;
    int32 value = -1;
    if (read_port(port, &code, &value, sizeof value) == sizeof value && code == i && value == i) ++inOrder;
  }
  return inOrder;
}

std::string obey(const std::string& order) {
  std::istringstream words(order);
  std::string verb;
  std::string name;
  words >> verb >> name;
  int32 number = 0;
  if (verb == "port") {
    words >> number;
    return status_name(create_port(number, name.c_str()));
  }
  const port_id port = find_port(name.c_str());
  if (verb == "find") return port >= 0 ? "yes" : "no";
  if (verb == "read") return read_one(port);
  if (verb == "delete") return status_name(delete_port(port));
  if (verb == "write") {
    std::string text;
    bigtime_t timeout = 0;
    words >> text >> timeout;
    return status_name(write_port_etc(port, 1, text.data(), text.size(), timeout));
  }
  words >> number;
  if (verb == "write-many") return status_name(write_many(port, number));
  if (verb == "read-many") return std::to_string(read_many(port, number));
  return "what?";
}

} // namespace

int main() {
  for (std::string order; std::getline(std::cin, order);) std::cout << obey(order) << std::endl;
}
