#pragma once

#include "platform/app/looper.h"

#include <atomic>
#include <memory>
#include <string>

class BWindow;

/** A looper that finds a partner looper by its name and communicates with it. Fields belong to its own thread, except
    the atomic fEnds. */
class TCommMan : public BLooper {
public:
  TCommMan(const char* name, const char* partnerName);

  void MessageReceived(BMessage* message) override;
  /** Starts the loop, then calls `Connect`. */
  thread_id Run() override;
  /** 0 if the partner was found and notified, -1 if it does not exist. */
  status_t Connect();
  /** Send to the partner; block without limit until `EndWaiting`. -1 without a partner. */
  status_t SendMessage(const BMessage* message);
  status_t SendMessage(const BMessage* message, BMessage* reply);
  /** Quits the window and sets the pointer to null; does nothing if it is null or cannot be locked. */
  void CloseWindow(BWindow** window);
  /** Makes the sender the partner, unless there is one already or the field is missing. */
  void CommManConnected(const BMessage& message);
  /** Cancels all current and future waits for the partner. Thread-safe. */
  void EndWaiting() { fEnds = true; }

private:
  std::string fPartnerName; // cleared once found
  std::unique_ptr<BMessenger> fPartner;
  std::atomic<bool> fEnds{false};
};
