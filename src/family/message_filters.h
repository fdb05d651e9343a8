#pragma once

#include "platform/app/message.h"
#include "platform/app/message_filter.h"
#include "platform/app/messenger.h"
#include "plugin/message_codes.h"

#include <map>
#include <mutex>
#include <string>

/** Application filter that copies every change notice of the common preferences to the target. If the target's queue
    stays full, the latest notice of each preference is kept for it, so that a burst of changes ends with the last
    one. */
class TIAPFilter : public BMessageFilter {
public:
  explicit TIAPFilter(const BMessenger& target) : BMessageFilter(kMsgIAPChanged), fTarget(target) {}
  filter_result Filter(BMessage* message, BHandler** target) override;
  /** The kept notices, by the name of the preference; removes them. Thread-safe. */
  std::map<std::string, BMessage> TakeUnsent();

private:
  void Keep(const std::string& item, const BMessage& notice);
  void Forget(const std::string& item);

  const BMessenger fTarget;
  std::mutex fMutex;
  std::map<std::string, BMessage> fUnsent; // guarded by fMutex
};

/** Filter of the player's window that sends kMsgHostWindowMoved to the target for each `change`: B_WINDOW_MOVED or
    B_WINDOW_RESIZED. Notices are coalesced, so that a window that is waiting for its user gets one at the end. */
class TWMFilter : public BMessageFilter {
public:
  explicit TWMFilter(const BMessenger& target, uint32 change) : BMessageFilter(change), fTarget(target) {}
  filter_result Filter(BMessage* message, BHandler** target) override;

private:
  const BMessenger fTarget;
};
