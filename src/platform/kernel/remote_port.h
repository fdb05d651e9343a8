#pragma once

#include "platform/kernel/port_line.h"

#include <memory>
#include <mutex>
#include <span>
#include <string>
#include <vector>

/** A question put to another process; who lets it go does not hear the answer any more. One thread at a time. */
class RemoteQuestion {
public:
  RemoteQuestion(std::shared_ptr<class RemotePort> port, std::unique_ptr<PortLine> line);
  /** B_TIMED_OUT while the answer is out, B_BAD_PORT_ID when the other process has gone without one. */
  status_t Take(std::vector<char>* answer, bigtime_t timeout);

private:
  friend class RemotePort;
  /** Reads until it knows what became of the question, or has the answer. */
  status_t AwaitStatus(bigtime_t until);
  status_t AwaitAnswer(bigtime_t until);
  status_t ReadOne(bigtime_t until);

  const std::shared_ptr<RemotePort> fPort;
  std::unique_ptr<PortLine> fLine;
  bool fHasStatus = false;
  bool fHasAnswer = false;
  status_t fStatus = B_OK;
  std::vector<char> fAnswer;
};

/** A port that another process has made, for as long as that process keeps it. Any thread; a sender that waits for room
    holds up no other. */
class RemotePort : public std::enable_shared_from_this<RemotePort> {
public:
  static status_t Connect(const std::string& name, std::shared_ptr<RemotePort>* port);

  const std::string& Name() const { return fName; }
  bool IsAlive() const;
  /** B_OK once the message is in the port's queue, B_WOULD_BLOCK for a timeout of 0 and no room. A process that has
      stopped is waited for a few seconds longer. */
  status_t Send(int32 code, std::span<const char> bytes, bigtime_t timeout);
  status_t Ask(int32 code, std::span<const char> bytes, bigtime_t timeout, std::unique_ptr<RemoteQuestion>* question);

private:
  friend class RemoteQuestion;
  RemotePort(std::string name, UniqueFd anchor) : fName(std::move(name)), fAnchor(std::move(anchor)) {}
  status_t TakeLine(std::unique_ptr<PortLine>* line);
  void PutBack(std::unique_ptr<PortLine> line);

  const std::string fName;
  /** Never written to. It breaks when the owner goes, so that whoever has the name afterwards is not taken for it. */
  const UniqueFd fAnchor;
  std::mutex fMutex;
  std::vector<std::unique_ptr<PortLine>> fIdle;
};

/** The ports of other processes, by ids of their own. Any thread. */
namespace remote_ports {
bool is_remote(port_id id);
port_id find(const std::string& name);
/** Null when the process that had made it has given it up. */
std::shared_ptr<RemotePort> get(port_id id);
} // namespace remote_ports
