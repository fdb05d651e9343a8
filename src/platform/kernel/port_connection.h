#pragma once

#include "platform/kernel/port_return.h"
#include "platform/kernel/thread_checker.h"

#include <memory>
#include <optional>

/** Receives the messages of one port. */
class PortSink {
public:
  virtual ~PortSink() = default;
  /** On the service's thread; must not block. B_WOULD_BLOCK: no room, the sink calls `port_service::look_again` when
      there may be some. Any other status settles the frame; its bytes may be moved out of it. An answer may be sent
      through `sender` at any later time. */
  virtual status_t Offer(PortFrame* frame, const std::shared_ptr<PortReturn>& sender) = 0;
};

/** One sender connected to one port. Lives on the service's thread. While its message waits for room nothing more is
    read from it. */
class PortConnection {
public:
  PortConnection(UniqueFd socket, std::shared_ptr<PortSink> sink);
  PortConnection(const PortConnection&) = delete;
  PortConnection& operator=(const PortConnection&) = delete;
  ~PortConnection();

  int Socket() const { return fSender->Socket(); }
  /** The poll() events to wait for. */
  short AwaitedEvents() const;
  /** Handles the events that poll() returned. */
  void Handle(short events);
  /** Offers the waiting message again; answers B_TIMED_OUT once its deadline has passed. */
  void LookAgain(bigtime_t now);
  /** B_INFINITE_TIMEOUT when nothing waits. */
  bigtime_t Deadline() const;
  bool IsOver() const { return fOver; }
  /** The bytes of unfinished and waiting messages; an amount below one read, which every sender may have, counts as
      0. */
  size_t HeldBytes() const;
  /** The time of the last read. */
  bigtime_t LastHeard() const { return fLastHeard; }
  void CutOff() { fOver = true; }

private:
  void HandleEvents(short events);
  /** Makes the call; an exception ends only this connection. */
  template <typename Call>
  void Guard(Call call);
  void Read();
  void TakeFrames();
  /** False while the message waits. */
  bool Settle(PortFrame* frame, bigtime_t now);
  void SendStatus(status_t status);

  [[no_unique_address]] ThreadChecker fThread;
  std::shared_ptr<PortReturn> fSender;
  std::shared_ptr<PortSink> fSink;
  PortFrameReader fReader;
  std::optional<PortFrame> fWaiting;
  bigtime_t fLastHeard;
  bool fOver = false;
};
