#pragma once

#include "common/thread.h"
#include "platform/app/messenger.h"

#include <atomic>

/** The port behind which the common window is found, wherever it is open. */
inline constexpr const char* kIAPPortName = "KOREVAIAPPort";

/** Makes the port, hands every message of the family that comes through it to the window, and deletes it in the end. */
class TIAPPortManager : public koreva::TThread {
public:
  static constexpr port_id kNoPort = -500;

  explicit TIAPPortManager(const BMessenger& window);
  ~TIAPPortManager() override;

  /** 0 until the port is made; kNoPort when it cannot be. Any thread. */
  port_id Port() const { return fPort; }
  /** Returns when the thread has ended. */
  void Stop();

protected:
  int32 Execute() override;

private:
  bool HandOn();
  void Deliver(const BMessage& message);

  const BMessenger fWindow;
  std::atomic<port_id> fPort{0};
};
