#pragma once

#include "platform/app/looper.h"

#include <atomic>
#include <memory>
#include <string>

class BWindow;

/** A looper that finds one partner looper by its name and talks to it. All fields belong to its own thread. */
class TCommMan : public BLooper {
public:
  TCommMan(const char* name, const char* partnerName);

  void MessageReceived(BMessage* message) override;
  /** Starts the loop, then looks for the partner. */
  thread_id Run() override;
  /** 0 when the partner was found and told, -1 when it is not there. */
  status_t Connect();
  /** To the partner; waits without limit, but gives up after `EndWaiting`. -1 without a partner. */
  status_t SendMessage(const BMessage* message);
  status_t SendMessage(const BMessage* message, BMessage* reply);
  /** Closes the window and sets the pointer to null; nothing when it is null or cannot be locked. */
  void CloseWindow(BWindow** window);
  /** Takes the sender for the partner, unless there is one or the field is missing. */
  void CommManConnected(const BMessage& message);
  /** Before the end: from now on nothing waits for the partner. Any thread. */
  void EndWaiting() { fEnds = true; }

private:
  std::string fPartnerName; // emptied once found
  std::unique_ptr<BMessenger> fPartner;
  std::atomic<bool> fEnds{false};
};
