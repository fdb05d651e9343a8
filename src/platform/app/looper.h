#pragma once

#include "platform/app/handler.h"
#include "platform/app/messenger.h"
#include "platform/kernel/threads.h"

#include <memory>
#include <vector>

class BMessageFilter;

inline constexpr int32 B_LOOPER_PORT_DEFAULT_CAPACITY = 200;

/** A message queue and, once `Run` was called, a thread with the looper's name that passes each message to its handler
    with the looper locked. Created with new; ended by `Quit`, never deleted from outside once it runs. */
class BLooper : public BHandler {
public:
  explicit BLooper(const char* name = nullptr, int32 priority = B_NORMAL_PRIORITY,
                   int32 portCapacity = B_LOOPER_PORT_DEFAULT_CAPACITY);
  ~BLooper() override;

  /** Posts from any thread; does not block. B_WOULD_BLOCK when the queue is full, B_BAD_HANDLER for a handler of
     another looper. Without a handler the message goes to the looper. Callers that need no delivery ignore the status.
   */
  status_t PostMessage(uint32 code);
  status_t PostMessage(const BMessage* message);
  status_t PostMessage(uint32 code, BHandler* handler, BHandler* replyTo = nullptr);
  status_t PostMessage(const BMessage* message, BHandler* handler, BHandler* replyTo = nullptr);

  virtual void DispatchMessage(BMessage* message, BHandler* handler);
  void MessageReceived(BMessage* message) override;
  /** The message being handled; null outside a handler. On the looper's thread only (checked in debug builds). */
  BMessage* CurrentMessage() const;

  /** With the looper locked or not running (checked in debug builds). Null and a handler of another looper are
      ignored. */
  void AddHandler(BHandler* handler);
  /** As above; false when it is not a handler of this looper. */
  bool RemoveHandler(BHandler* handler);

  /** Filters see a message before its handler. The looper owns an added filter; removing it returns the ownership. With
      the looper locked or not running (checked in debug builds). */
  void AddCommonFilter(BMessageFilter* filter);
  bool RemoveCommonFilter(BMessageFilter* filter);

  /** Starts the thread and returns its id, or a negative status when no thread can be created: then the looper is not
      running. */
  virtual thread_id Run();
  /** Ends the loop and deletes the looper. The caller holds the lock.
      On the looper's own thread it returns, and the looper is deleted once the calling handler has returned; on another
      thread it releases the lock and blocks until the looper's thread has ended and the looper is deleted. A looper
     that never ran is deleted at once. Queued messages are dropped. */
  virtual void Quit();
  /** Called for B_QUIT_REQUESTED: `Quit` follows when it returns true. The reply is a B_REPLY with bool "result". */
  virtual bool QuitRequested();

  /** Recursive. False when the looper is gone or ending. Prefer TLooperLock. */
  [[nodiscard]] bool Lock();
  [[nodiscard]] status_t LockWithTimeout(bigtime_t timeout);
  void Unlock();
  thread_id Thread() const;
  static BLooper* LooperForThread(thread_id thread);

  /** For tests, which drive a looper that does not run: deliver the next message, or all (including those that handlers
      post meanwhile), on the calling thread. Return whether / how many were delivered. */
  bool DeliverNext();
  int32 DeliverAll();
  int32 CountMessages() const;

  /** The codes that this looper accepts as answers from other processes, instead of B_REPLY and
      B_MESSAGE_NOT_UNDERSTOOD; answers with other codes are refused. Any thread. */
  void SetAnswerCodes(std::vector<uint32> codes);

  /** For assertions: the caller has the looper locked (its own thread has, in handlers), or no thread runs it. */
  bool IsCallAllowed() const;

  /** The queue and the lock, private to the messaging. */
  struct Core;

protected:
  /** Called by a window when it can be used, and with null when it begins to end. */
  void SetWindow(class BWindow* window);
  static BMessenger AddressOf(const Core& core);

private:
  friend class BHandler;
  friend class BMessenger;
  friend class TLooperLock;
  static int32 LoopEntry(void* core);
  static bool DeliverOne(const std::shared_ptr<Core>& core);
  BHandler* TargetOf(BMessage* message);
  BHandler* Filtered(BMessage* message, BHandler* target);
  void Deliver(BMessage* message);
  /** Outlives the looper for holders of messengers. */
  std::shared_ptr<Core> fCore;
};
