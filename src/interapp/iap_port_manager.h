#pragma once

#include "common/thread.h"
#include "platform/app/messenger.h"

#include <atomic>

/** The port of the common window, in whichever process it is open. */
inline constexpr const char* kIAPPortName = "KOREVAIAPPort";

/** Owns the port of the common window and a thread that forwards its messages to the window. */
class TIAPPortManager : public koreva::TThread {
public:
  static constexpr port_id kNoPort = -500;

  explicit TIAPPortManager(const BMessenger& window);
  ~TIAPPortManager() override;

  /** 0 until the port exists; kNoPort if it cannot be created. Thread-safe. */
  port_id Port() const { return fPort; }
  /** Deletes the port and joins the thread. */
  void Stop();

protected:
  int32 Execute() override;

private:
  bool HandOn();
  void Deliver(const BMessage& message);

  const BMessenger fWindow;
  std::atomic<port_id> fPort{0};
};
