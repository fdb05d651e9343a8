#pragma once

#include "platform/app/message.h"
#include "platform/interface/view.h"

#include <memory>
#include <string>

/** A view that sends a copy of its message when the user works it. Owns the message. */
class BControl : public BView {
public:
  BControl(BRect frame, const char* name, const char* label, BMessage* message, uint32 resizingMode = B_FOLLOW_LEFT_TOP,
           uint32 flags = B_NAVIGABLE);
  ~BControl() override;

  virtual void SetLabel(const char* label) { fLabel = label; }
  const char* Label() const { return fLabel.c_str(); }
  virtual void SetValue(int32 value) { fValue = value; }
  int32 Value() const { return fValue; }
  virtual void SetEnabled(bool enabled);
  bool IsEnabled() const { return fIsEnabled; }

  /** Takes the message over; null for none. */
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
  /** Sends a copy of the message as Invoke does, enabled or not. */
  void Send(const BMessage& message);

private:
  std::string fLabel;
  int32 fValue = 0;
  bool fIsEnabled = true;
  std::unique_ptr<BMessage> fMessage;
  BMessenger fTarget;
};
