#pragma once

#include "platform/interface/control.h"

/** A field of one line to type in. Its label is what it is called by those who listen to the screen; on the screen it
    stands beside the field in a view of its own. */
class BTextControl : public BControl {
public:
  BTextControl(BRect frame, const char* name, const char* label, const char* text,
               uint32 resizingMode = B_FOLLOW_LEFT_TOP);

  void SetLabel(const char* label) override;
  void SetText(const char* text);
  /** What the user has typed by the last message that was handled. */
  const std::string& Text() const { return fText; }
  void SelectAll();
  /** Sent to the target after each change by the user; takes the message over. */
  void SetModificationMessage(BMessage* message) { fModificationMessage.reset(message); }

  void MessageReceived(BMessage* message) override;

protected:
  std::shared_ptr<display::ControlPeer> MakeControl() override;

private:
  std::string fText;
  std::unique_ptr<BMessage> fModificationMessage;
};
