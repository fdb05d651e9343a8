#pragma once

#include "platform/kernel/port_line.h"

#include <memory>
#include <mutex>
#include <span>
#include <string>
#include <vector>

/** A pending question to another process; destroying it discards the answer. Not thread-safe. */
class RemoteQuestion {
public:
  RemoteQuestion(std::shared_ptr<class RemotePort> port, std::unique_ptr<PortLine> line);
  /** B_TIMED_OUT while there is no answer yet, B_BAD_PORT_ID when the other process has ended without one. */
  [[nodiscard]] status_t Take(std::vector<char>* answer, bigtime_t timeout);

private:
  friend class RemotePort;
  /** Reads until the status of the question or the answer has arrived. */
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

/** A port of another process, valid until that process deletes it. Thread-safe; a sender that waits for room does not
    block others. */
class RemotePort : public std::enable_shared_from_this<RemotePort> {
public:
  [[nodiscard]] static status_t Connect(const std::string& name, std::shared_ptr<RemotePort>* port);

  const std::string& Name() const { return fName; }
  bool IsAlive() const;
  /** B_OK once the message is in the port's queue, B_WOULD_BLOCK for a timeout of 0 and no room. Waits a few seconds
      longer for a process that does not respond. */
  [[nodiscard]] status_t Send(int32 code, std::span<const char> bytes, bigtime_t timeout);
  [[nodiscard]] status_t Ask(int32 code, std::span<const char> bytes, bigtime_t timeout,
                             std::unique_ptr<RemoteQuestion>* question);

private:
  friend class RemoteQuestion;
  RemotePort(std::string name, UniqueFd anchor) : fName(std::move(name)), fAnchor(std::move(anchor)) {}
  status_t TakeLine(std::unique_ptr<PortLine>* line);
  void PutBack(std::unique_ptr<PortLine> line);

  const std::string fName;
  /** Never written to. Breaks when the owner goes, so that a later owner of the name is not mistaken for it. */
  const UniqueFd fAnchor;
  std::mutex fMutex; // guards fIdle
  std::vector<std::unique_ptr<PortLine>> fIdle;
};

/** The ports of other processes; their ids differ from those of this process's ports. Thread-safe. */
namespace remote_ports {
bool is_remote(port_id id);
[[nodiscard]] port_id find(const std::string& name);
/** Null when the owner has deleted it or is gone. */
std::shared_ptr<RemotePort> get(port_id id);
} // namespace remote_ports
