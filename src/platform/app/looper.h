#pragma once

#include "platform/app/handler.h"
#include "platform/app/messenger.h"
#include "platform/kernel/threads.h"

#include <memory>
#include <vector>

class BMessageFilter;

inline constexpr int32 B_LOOPER_PORT_DEFAULT_CAPACITY = 200;

/** A queue of messages and, once `Run` was called, a thread that bears the looper's name and hands each message to
    its handler with the looper locked. Made with new; ended by `Quit`, never deleted from outside once it runs. */
class BLooper : public BHandler {
public:
  explicit BLooper(const char* name = nullptr, int32 priority = B_NORMAL_PRIORITY,
                   int32 portCapacity = B_LOOPER_PORT_DEFAULT_CAPACITY);
  ~BLooper() override;

  /** Posts from any thread; never waits. B_WOULD_BLOCK when the queue is full, B_BAD_HANDLER for a handler of another
      looper. Without a handler the message goes to the preferred handler, without that to the looper. */
  status_t PostMessage(uint32 code);
  status_t PostMessage(const BMessage* message);
  status_t PostMessage(uint32 code, BHandler* handler, BHandler* replyTo = nullptr);
  status_t PostMessage(const BMessage* message, BHandler* handler, BHandler* replyTo = nullptr);

  virtual void DispatchMessage(BMessage* message, BHandler* handler);
  void MessageReceived(BMessage* message) override;
  /** The message being handled; null outside a handler. On the looper's thread. */
  BMessage* CurrentMessage() const;

  /** With the looper locked. */
  void AddHandler(BHandler* handler);
  bool RemoveHandler(BHandler* handler);
  int32 CountHandlers() const;
  BHandler* HandlerAt(int32 index) const;
  BHandler* PreferredHandler() const;
  void SetPreferredHandler(BHandler* handler);

  /** Filters see a message before every handler. The looper owns an added filter; removing hands it back.
      With the looper locked. */
  void AddCommonFilter(BMessageFilter* filter);
  bool RemoveCommonFilter(BMessageFilter* filter);

  /** Starts the thread and returns its id; a negative status when there is no thread to be had: then the looper is as
     if it had never run. */
  virtual thread_id Run();
  /** Ends the loop and deletes the looper. The caller holds the lock.
      On the looper's own thread it returns, and the looper goes once the handler that called it has returned;
      on another thread it gives the lock up and waits until the looper's thread has ended and the looper is deleted.
      A looper that never ran is deleted at once. Messages still queued are dropped. */
  virtual void Quit();
  /** Asked by B_QUIT_REQUESTED: true lets `Quit` follow. The asker is told by B_REPLY with bool "result". */
  virtual bool QuitRequested();

  /** False when the looper is gone or ending. May be taken several times by one thread. */
  bool Lock();
  status_t LockWithTimeout(bigtime_t timeout);
  void Unlock();
  bool IsLocked() const;
  thread_id Thread() const;
  static BLooper* LooperForThread(thread_id thread);

  /** For loopers that do not run, in tests: hand the next message, or all (also those that handlers post meanwhile),
      to their handlers on the calling thread. Return whether / how many were delivered. */
  bool DeliverNext();
  int32 DeliverAll();
  int32 CountMessages() const;

  /** The codes that this looper takes as answers from another process that it has asked, instead of B_REPLY and
      B_MESSAGE_NOT_UNDERSTOOD; any other code that comes back is refused. Any thread. */
  void SetAnswerCodes(std::vector<uint32> codes);

  /** For assertions: the caller has the looper locked (its own thread has, in handlers), or no thread runs it. */
  bool IsCallAllowed() const;

  /** The queue and the lock, known to the messaging alone. */
  struct Core;

protected:
  /** A window says so when it can be used, and takes it back (null) when its end begins. */
  void SetWindow(class BWindow* window);
  static BMessenger AddressOf(const Core& core);

private:
  friend class BHandler;
  friend class BMessenger;
  static int32 LoopEntry(void* core);
  static bool DeliverOne(Core* core);
  BHandler* TargetOf(BMessage* message);
  BHandler* Filtered(BMessage* message, BHandler* target);
  void Deliver(BMessage* message);
  /** Outlives the looper for those who still hold a messenger. */
  std::shared_ptr<Core> fCore;
};
