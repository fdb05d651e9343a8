#include "tests/player/peaks/loopback_server.h"

#include <arpa/inet.h>
#include <netinet/in.h>
#include <sys/socket.h>
#include <sys/time.h>
#include <unistd.h>

#include <array>
#include <stdexcept>

LoopbackServer::LoopbackServer(std::string body) : fSocket(socket(AF_INET, SOCK_STREAM | SOCK_CLOEXEC, 0)) {
  Serve(body);
  sockaddr_in address{};
  address.sin_family = AF_INET;
  address.sin_addr.s_addr = htonl(INADDR_LOOPBACK);
  socklen_t size = sizeof address;
  auto* const any = reinterpret_cast<sockaddr*>(&address);
  if (bind(fSocket, any, size) != 0 || listen(fSocket, 8) != 0 || getsockname(fSocket, any, &size) != 0)
    throw std::runtime_error("no server");
  fPort = ntohs(address.sin_port);
  fThread = std::thread(&LoopbackServer::Run, this);
}

LoopbackServer::~LoopbackServer() {
  shutdown(fSocket, SHUT_RDWR); // wakes the thread
  fThread.join();
  close(fSocket);
}

std::string LoopbackServer::Url(const std::string& path) const {
  return "http://127.0.0.1:" + std::to_string(fPort) + path;
}

void LoopbackServer::Serve(const std::string& body) {
  const std::lock_guard lock(fMutex);
  fReply = "HTTP/1.1 200 OK\r\nConnection: close\r\nContent-Length: " + std::to_string(body.size()) + "\r\n\r\n" + body;
}

void LoopbackServer::Redirect(const std::string& address) {
  const std::lock_guard lock(fMutex);
  fReply = "HTTP/1.1 302 Found\r\nConnection: close\r\nContent-Length: 0\r\nLocation: " + address + "\r\n\r\n";
}

int LoopbackServer::CountRequests(const std::string& path) {
  const std::lock_guard lock(fMutex);
  int count = 0;
  for (const auto& [asked, times] : fRequests) count += path.empty() || path == asked ? times : 0;
  return count;
}

void LoopbackServer::Run() {
  for (int connection = 0; (connection = accept(fSocket, nullptr, nullptr)) >= 0; close(connection)) Answer(connection);
}

void LoopbackServer::Answer(int connection) {
  const timeval limit{2, 0};
  setsockopt(connection, SOL_SOCKET, SO_RCVTIMEO, &limit, sizeof limit);
  setsockopt(connection, SOL_SOCKET, SO_SNDTIMEO, &limit, sizeof limit);
  std::string request;
  std::array<char, 1024> bytes{};
  ssize_t count = 0;
  while (request.find("\r\n\r\n") == std::string::npos && (count = recv(connection, bytes.data(), bytes.size(), 0)) > 0)
    request.append(bytes.data(), static_cast<size_t>(count));
  const size_t path = request.find(' ') + 1;
  std::string reply;
  {
    const std::lock_guard lock(fMutex);
    ++fRequests[request.substr(path, request.find(' ', path) - path)];
    reply = fReply;
  }
  send(connection, reply.data(), reply.size(), MSG_NOSIGNAL);
}
