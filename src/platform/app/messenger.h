#pragma once

#include "platform/support/types.h"

#include <memory>
#include <string>

class BHandler;
class BLooper;
class BMessage;

/** An answer that somebody will wait for, in pieces of time of its own choosing. */
class BPendingReply {
public:
  /** B_TIMED_OUT while the answer is out; an asker that lets this object go does not hear it any more. */
  status_t Wait(BMessage* reply, bigtime_t timeout);

private:
  friend class BMessenger;
  std::shared_ptr<class AnswerSource> fSource;
};

/** The address of a looper or of one of its handlers. A small value; stays safe to use when the target is gone
    (sending then gives B_BAD_PORT_ID). Any thread. */
class BMessenger {
public:
  BMessenger() = default;
  /** To a looper (`handler` null: its preferred handler) or to a handler that is attached to a looper. */
  explicit BMessenger(const BHandler* handler, const BLooper* looper = nullptr, status_t* result = nullptr);
  /** To whoever bears this application signature: this process first, then others. */
  explicit BMessenger(const char* signature, status_t* result = nullptr);

  bool IsValid() const;
  /** True for a looper of this process. */
  bool IsTargetLocal() const { return fPort == 0 && fLooperToken != 0; }
  /** Null when gone, or in another process. The pointer is safe to use only while its looper is locked. */
  BHandler* Target(BLooper** looper) const;
  bool LockTarget() const;
  status_t LockTargetWithTimeout(bigtime_t timeout) const;

  /** Posts without waiting for an answer; waits up to `timeout` for room in the target's queue. */
  status_t SendMessage(uint32 code, const BHandler* replyTo = nullptr) const;
  status_t SendMessage(const BMessage* message, const BHandler* replyTo = nullptr,
                       bigtime_t timeout = B_INFINITE_TIMEOUT) const;
  status_t SendMessage(const BMessage* message, const BMessenger& replyTo,
                       bigtime_t timeout = B_INFINITE_TIMEOUT) const;
  /** Sends and waits for the answer. When the target drops the question or goes away the answer is B_NO_REPLY_CODE. */
  status_t SendMessage(const BMessage* message, BMessage* reply, bigtime_t deliveryTimeout = B_INFINITE_TIMEOUT,
                       bigtime_t replyTimeout = B_INFINITE_TIMEOUT) const;

  friend bool operator==(const BMessenger&, const BMessenger&) = default;

  status_t SendMessage(const BMessage* message, BPendingReply* pending,
                       bigtime_t deliveryTimeout = B_INFINITE_TIMEOUT) const;
  /** Posts a notice that says "look again": while one with its code is queued for the same target, that one stands for
      both. Never waits, and a full queue takes it all the same. */
  status_t SendCoalesced(uint32 code) const;
  status_t SendCoalesced(const BMessage& notice) const;
  /** As SendMessage to a looper of this process. To another process it is sent in the background, where up to `timeout`
      is waited for room: the caller never waits, and B_OK says that it is on its way. */
  status_t SendLater(const BMessage& message, bigtime_t timeout) const;
  /** Posts without waiting for room; `mark` lives as long as the delivery does. For runners, which leave a beat out
      while the last one is still queued. */
  status_t SendMarked(const BMessage& message, std::shared_ptr<void> mark) const;

private:
  friend class BMessage;
  friend class BLooper;
  friend class RemoteMail;
  status_t Ask(const BMessage* message, BPendingReply* pending, bigtime_t deliveryTimeout) const;
  /** 0 where the target lives in another process. */
  uint64 LocalToken() const { return fPort == 0 ? fLooperToken : 0; }
  /** Where the target lives in another process: a way into that; its tokens are those of that process. */
  port_id fPort = 0;
  /** Tokens are never used twice; 0 is none. */
  uint64 fLooperToken = 0;
  uint64 fHandlerToken = 0;
};
