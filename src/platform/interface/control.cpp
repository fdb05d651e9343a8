#include "platform/interface/control.h"

#include "platform/interface/view_peer.h"
#include "platform/interface/window.h"
#include "platform/kernel/threads.h"

BControl::BControl(BRect frame, const char* name, const char* label, BMessage* message, uint32 resizingMode,
                   uint32 flags)
    : BView(frame, name, resizingMode, flags), fLabel(label), fMessage(message) {}

BControl::~BControl() = default;

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
  if (message->what == display::DISPLAY_CONTROL_WORKED) return Invoke();
  BView::MessageReceived(message);
}
