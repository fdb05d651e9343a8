#pragma once

#include "platform/kernel/port_return.h"

#include <memory>
#include <optional>

/** Where the messages of one port go. */
class PortSink {
public:
  virtual ~PortSink() = default;
  /** On the service's thread; never waits. B_WOULD_BLOCK: there is no room, and `port_service::look_again` is called
      when there may be some. What is taken is moved out of the frame; any status but B_WOULD_BLOCK settles it. An
     answer to it may be sent by `sender` at any later time. */
  virtual status_t Offer(PortFrame* frame, const std::shared_ptr<PortReturn>& sender) = 0;
};

/** One sender at one port, on the service's thread. While its message waits for room nothing more is read from it. */
class PortConnection {
public:
  PortConnection(UniqueFd socket, std::shared_ptr<PortSink> sink);
  PortConnection(const PortConnection&) = delete;
  PortConnection& operator=(const PortConnection&) = delete;
  ~PortConnection();

  int Socket() const { return fSender->Socket(); }
  /** What to wait for, and what to do when it has come. */
  short AwaitedEvents() const;
  void Handle(short events);
  /** Offers the waiting message again; says B_TIMED_OUT to a sender whose time is over. */
  void LookAgain(bigtime_t now);
  /** B_INFINITE_TIMEOUT when nothing waits. */
  bigtime_t Deadline() const;
  bool IsOver() const { return fOver; }
  /** What it has begun to send, and what waits for room; a small amount, which every sender may have, counts as 0. */
  size_t HeldBytes() const;
  /** When something was last read from it. */
  bigtime_t LastHeard() const { return fLastHeard; }
  void CutOff() { fOver = true; }

private:
  void HandleEvents(short events);
  /** Makes the call; an exception ends this connection alone. */
  template <typename Call>
  void Guard(Call call);
  void Read();
  void TakeFrames();
  /** False while the message waits. */
  bool Settle(PortFrame* frame, bigtime_t now);
  void Tell(status_t status);

  std::shared_ptr<PortReturn> fSender;
  std::shared_ptr<PortSink> fSink;
  PortFrameReader fReader;
  std::optional<PortFrame> fWaiting;
  bigtime_t fLastHeard;
  bool fOver = false;
};
