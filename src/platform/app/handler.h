#pragma once

#include "platform/support/types.h"

#include <string>

class BLooper;
class BMessage;

/** Receives messages on the thread of the looper it is attached to. Not owned by the looper, except where a
    derived class says so. */
class BHandler {
public:
  explicit BHandler(const char* name = nullptr);
  BHandler(const BHandler&) = delete;
  BHandler& operator=(const BHandler&) = delete;
  /** Detaches itself; the looper must be locked or not running. */
  virtual ~BHandler();

  /** The base hands the message to the next handler; without one, an unknown scripting question is answered with
      B_MESSAGE_NOT_UNDERSTOOD and any other message is dropped. */
  virtual void MessageReceived(BMessage* message);
  /** Names the handler that resolves the current specifier of a scripting message; the base says itself. */
  virtual BHandler* ResolveSpecifier(BMessage* message, int32 index, BMessage* specifier, int32 form,
                                     const char* property);

  BLooper* Looper() const { return fLooper; }
  bool LockLooper();
  void UnlockLooper();
  const char* Name() const { return fName.c_str(); }
  void SetName(const char* name);
  BHandler* NextHandler() const { return fNext; }
  void SetNextHandler(BHandler* handler) { fNext = handler; }

private:
  friend class BLooper;
  friend class BMessenger;
  std::string fName;
  uint64 fToken;
  BLooper* fLooper = nullptr;
  BHandler* fNext = nullptr;
};
