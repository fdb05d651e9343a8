#pragma once

#include "platform/app/message.h"
#include "platform/app/message_filter.h"
#include "platform/app/messenger.h"

inline constexpr uint32 kMsgIAPChanged = '_ipc';
/** To the editor window: the player's window moved. */
inline constexpr uint32 kMsgHostWindowMoved = 'Scwm';

/** On the application: passes a copy of every change notice of the shared preferences to its messenger. */
class TIAPFilter : public BMessageFilter {
public:
  explicit TIAPFilter(const BMessenger& target) : BMessageFilter(kMsgIAPChanged), fTarget(target) {}
  filter_result Filter(BMessage* message, BHandler** target) override;

private:
  const BMessenger fTarget;
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
