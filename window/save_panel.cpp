#include "window/save_panel.h"

#include "platform/app/message.h"

TVesmoESavePanel::TVesmoESavePanel(const BMessenger& target) : BFilePanel(B_SAVE_PANEL, &target) {}

void TVesmoESavePanel::SendMessage(const BMessenger* target, BMessage* message) {
  message->RemoveName("Encoding"); // those of an earlier save
  message->RemoveName("CRType");
  message->AddInt32("Encoding", fEncoding);
  message->AddInt32("CRType", fCRType);
  BFilePanel::SendMessage(target, message);
}
