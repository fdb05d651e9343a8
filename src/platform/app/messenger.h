#pragma once

#include "platform/support/types.h"

#include <memory>
#include <string>

class BHandler;
class BLooper;
class BMessage;

/** An answer that has not arrived yet. Not thread-safe. */
class BPendingReply {
public:
  /** May be called again after B_TIMED_OUT. Destroying the object discards the answer. */
  [[nodiscard]] status_t Wait(BMessage* reply, bigtime_t timeout);

private:
  friend class BMessenger;
  std::shared_ptr<class AnswerSource> fSource;
};

/** The address of a looper or of one of its handlers. A small value; may be used when the target is gone (sending then
    gives B_BAD_PORT_ID). Thread-safe. */
class BMessenger {
public:
  BMessenger() = default;
  /** To a looper (`handler` null) or to a handler that is attached to a looper. */
  explicit BMessenger(const BHandler* handler, const BLooper* looper = nullptr, status_t* result = nullptr);
  /** To the owner of this application signature: in this process first, then in others. */
  explicit BMessenger(const char* signature, status_t* result = nullptr);

  bool IsValid() const;
  /** Null when gone, or in another process. The pointer is valid only while its looper is locked. */
  BHandler* Target(BLooper** looper) const;
  [[nodiscard]] bool LockTarget() const;
  [[nodiscard]] status_t LockTargetWithTimeout(bigtime_t timeout) const;

  /** Posts without waiting for an answer; waits up to `timeout` for room in the target's queue. Commands that need no
      delivery, such as notices, ignore the status. */
  status_t SendMessage(uint32 code, const BHandler* replyTo = nullptr) const;
  status_t SendMessage(const BMessage* message, const BHandler* replyTo = nullptr,
                       bigtime_t timeout = B_INFINITE_TIMEOUT) const;
  status_t SendMessage(const BMessage* message, const BMessenger& replyTo,
                       bigtime_t timeout = B_INFINITE_TIMEOUT) const;
  /** Sends and waits for the answer, which is B_NO_REPLY_CODE when the target drops the question or ends. */
  status_t SendMessage(const BMessage* message, BMessage* reply, bigtime_t deliveryTimeout = B_INFINITE_TIMEOUT,
                       bigtime_t replyTimeout = B_INFINITE_TIMEOUT) const;

  friend bool operator==(const BMessenger&, const BMessenger&) = default;

  status_t SendMessage(const BMessage* message, BPendingReply* pending,
                       bigtime_t deliveryTimeout = B_INFINITE_TIMEOUT) const;
  /** Posts a coalesced notice: dropped, with B_OK, while an earlier one with its code is queued for the same target.
     Does not block; accepted beyond the capacity of the queue. */
  status_t SendCoalesced(uint32 code) const;
  status_t SendCoalesced(const BMessage& notice) const;
  /** As SendMessage to a looper of this process. To another process it sends in the background and waits there up to
      `timeout` for room; B_OK then only means that it was queued. */
  status_t SendLater(const BMessage& message, bigtime_t timeout) const;
  /** Posts without waiting for room; the delivery shares the ownership of `mark`. For runners, which skip a beat while
     the previous one is queued. */
  status_t SendMarked(const BMessage& message, std::shared_ptr<void> mark) const;

private:
  friend class BMessage;
  friend class BLooper;
  friend class RemoteMail;
  friend class TLooperLock;
  status_t Ask(const BMessage* message, BPendingReply* pending, bigtime_t deliveryTimeout) const;
  /** 0 where the target lives in another process. */
  uint64 LocalToken() const { return fPort == 0 ? fLooperToken : 0; }
  /** The port of the target's process when that is another one, and the tokens are that process's; else 0. */
  port_id fPort = 0;
  /** Tokens are never reused; 0 means none. */
  uint64 fLooperToken = 0;
  uint64 fHandlerToken = 0;
};
