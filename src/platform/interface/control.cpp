#include "platform/interface/control.h"

#include "platform/interface/control_peer.h"
#include "platform/interface/window.h"
#include "platform/kernel/threads.h"

BControl::BControl(BRect frame, const char* name, const char* label, BMessage* message, uint32 resizingMode,
                   uint32 flags)
    : BView(frame, name, resizingMode, flags), fLabel(label), fMessage(message) {}

BControl::~BControl() = default;

std::shared_ptr<display::ViewPeer> BControl::MakePeer() {
  auto peer = MakeControl();
  peer->SetLabel(fLabel);
  if (fValue) peer->SetValue(*fValue);
  peer->SetEnabled(fIsEnabled);
  return peer;
}

display::ControlPeer* BControl::Control() const {
  return static_cast<display::ControlPeer*>(Peer());
}

void BControl::SetLabel(const char* label) {
  fLabel = label;
  if (Control()) Control()->SetLabel(fLabel);
}

void BControl::SetValue(int32 value) {
  fValue = value;
  if (Control()) Control()->SetValue(value);
}

void BControl::SetEnabled(bool enabled) {
  fIsEnabled = enabled;
  if (Peer()) Peer()->SetEnabled(enabled);
}

void BControl::SetMessage(BMessage* message) {
  fMessage.reset(message);
}

void BControl::Invoke() {
  if (fIsEnabled && fMessage) Send(*fMessage);
}

void BControl::Send(const BMessage& message) {
  BMessage copy(message);
  copy.AddPointer("source", this);
  copy.AddInt64("when", system_time());
  const BMessenger target = fTarget == BMessenger() ? BMessenger(Window()) : fTarget;
  target.SendMessage(&copy, BMessenger(), 0);
}

void BControl::MessageReceived(BMessage* message) {
  int32 value = 0;
  switch (message->what) {
  case display::DISPLAY_CONTROL_WORKED:
    return Invoke();
  case display::DISPLAY_VALUE_CHOSEN:
    if (message->FindInt32("value", &value) == B_OK) ValueChosen(value);
    return;
  default:
    return BView::MessageReceived(message);
  }
}

void BControl::ValueChosen(int32 value) {
  fValue = value;
  Invoke();
}
