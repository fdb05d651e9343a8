#pragma once

#include "platform/app/message.h"
#include "platform/interface/view.h"

#include <memory>
#include <optional>
#include <string>

namespace display {
class ControlPeer;
}

/** A view that sends a copy of its message when the user operates it. Owns the message. */
class BControl : public BView {
public:
  BControl(BRect frame, const char* name, const char* label, BMessage* message, uint32 resizingMode = B_FOLLOW_LEFT_TOP,
           uint32 flags = B_NAVIGABLE);
  ~BControl() override;

  virtual void SetLabel(const char* label);
  const char* Label() const { return fLabel.c_str(); }
  virtual void SetValue(int32 value);
  /** 0 until one is set or chosen. */
  int32 Value() const { return fValue.value_or(0); }
  virtual void SetEnabled(bool enabled);
  bool IsEnabled() const { return fIsEnabled; }

  /** Takes ownership; null for none. */
  void SetMessage(BMessage* message);
  BMessage* Message() const { return fMessage.get(); }
  /** Without a target the message goes to the window. */
  void SetTarget(const BMessenger& target) { fTarget = target; }
  void SetTarget(const BHandler* handler) { fTarget = BMessenger(handler); }
  BMessenger Target() const { return fTarget; }
  /** Sends a copy of the message (with pointer "source", int64 "when"). Nothing while disabled. */
  virtual void Invoke();

  void MessageReceived(BMessage* message) override;

protected:
  std::shared_ptr<display::ViewPeer> MakePeer() final;
  /** Hook: makes the control on the display; the base then hands it label, value and whether it is enabled. */
  virtual std::shared_ptr<display::ControlPeer> MakeControl() = 0;
  /** Null while detached. */
  display::ControlPeer* Control() const;
  /** Hook: the user has chosen a value, which the control shows already. The base takes it over and invokes. */
  virtual void ValueChosen(int32 value);
  /** Sends a copy of the message as Invoke does, enabled or not. */
  void Send(const BMessage& message);

private:
  std::string fLabel;
  std::optional<int32> fValue;
  bool fIsEnabled = true;
  std::unique_ptr<BMessage> fMessage;
  BMessenger fTarget;
};
