#pragma once

#include "platform/app/message.h"
#include "platform/app/message_filter.h"
#include "platform/app/messenger.h"
#include "plugin/message_codes.h"

#include <map>
#include <mutex>
#include <string>

/** On the application: passes a copy of every change notice of the shared preferences to its messenger. When the
    target's queue stays full, the latest notice of each preference is kept for it, so that a burst of changes ends with
    the last one. */
class TIAPFilter : public BMessageFilter {
public:
  explicit TIAPFilter(const BMessenger& target) : BMessageFilter(kMsgIAPChanged), fTarget(target) {}
  filter_result Filter(BMessage* message, BHandler** target) override;
  /** What found no room, by the name of its preference. Any thread. */
  std::map<std::string, BMessage> TakeUnsent();

private:
  void Keep(const std::string& item, const BMessage& notice);
  void Forget(const std::string& item);

  const BMessenger fTarget;
  std::mutex fMutex;
  std::map<std::string, BMessage> fUnsent; // guarded by fMutex
};

/** On the player's window: notifies its messenger whenever that window moves. Moves coalesce while the notice is
   queued, so that a window that asks its user something gets one at the end. */
class TWMFilter : public BMessageFilter {
public:
  explicit TWMFilter(const BMessenger& target) : BMessageFilter(B_WINDOW_MOVED), fTarget(target) {}
  filter_result Filter(BMessage* message, BHandler** target) override;

private:
  const BMessenger fTarget;
};
