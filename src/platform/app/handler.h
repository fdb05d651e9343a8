#pragma once

#include "platform/support/types.h"

#include <string>

class BLooper;
class BMessage;

/** Receives messages on the thread of the looper it is attached to. The looper does not own it, unless a derived class
    says so. */
class BHandler {
public:
  explicit BHandler(const char* name = nullptr);
  BHandler(const BHandler&) = delete;
  BHandler& operator=(const BHandler&) = delete;
  /** Detaches itself; the looper must be locked or not running. */
  virtual ~BHandler();

  /** The base passes the message to the next handler; without one, it answers an unknown scripting question with
      B_MESSAGE_NOT_UNDERSTOOD and drops any other message. */
  virtual void MessageReceived(BMessage* message);
  /** Returns the handler that resolves the current specifier of a scripting message; the base returns itself. */
  virtual BHandler* ResolveSpecifier(BMessage* message, int32 index, BMessage* specifier, int32 form,
                                     const char* property);

  BLooper* Looper() const { return fLooper; }
  const char* Name() const { return fName.c_str(); }
  void SetNextHandler(BHandler* handler) { fNext = handler; }

private:
  friend class BLooper;
  friend class BMessenger;
  const std::string fName;
  uint64 fToken;
  BLooper* fLooper = nullptr;
  BHandler* fNext = nullptr;
};
