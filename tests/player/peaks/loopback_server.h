#pragma once

#include <map>
#include <mutex>
#include <string>
#include <thread>

/** An HTTP server on this machine that answers every request alike and counts them. */
struct LoopbackServer {
  explicit LoopbackServer(std::string body);
  LoopbackServer(const LoopbackServer&) = delete;
  LoopbackServer& operator=(const LoopbackServer&) = delete;
  ~LoopbackServer();

  std::string Url(const std::string& path) const;
  void Serve(const std::string& body);
  void Redirect(const std::string& address);
  /** Of all paths, or of one. */
  int CountRequests(const std::string& path = {});

private:
  void Run();
  void Answer(int connection);

  int fSocket = -1;
  int fPort = 0;
  std::mutex fMutex; // guards fReply, fRequests
  std::string fReply;
  std::map<std::string, int> fRequests;
  std::thread fThread;
};
