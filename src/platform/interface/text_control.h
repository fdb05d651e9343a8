#pragma once

#include "platform/interface/control.h"

#include <utility>

/** A one-line text field. The label is the accessible name; a visible label is a view of its own. */
class BTextControl : public BControl {
public:
  BTextControl(BRect frame, const char* name, const char* label, const char* text,
               uint32 resizingMode = B_FOLLOW_LEFT_TOP);

  void SetLabel(const char* label) override;
  void SetText(const char* text);
  /** As of the last message handled. */
  const std::string& Text() const { return fText; }
  void SelectAll();
  /** After that start of the text. */
  void PlaceCaretAfter(const std::string& start);
  /** The text up to the caret and from it on, as it is shown now. Blocks on the display thread. */
  std::pair<std::string, std::string> TextAroundCaret() const;
  /** Sent to the target after each change by the user. Takes ownership. */
  void SetModificationMessage(BMessage* message) { fModificationMessage.reset(message); }

  void MessageReceived(BMessage* message) override;

protected:
  std::shared_ptr<display::ControlPeer> MakeControl() override;

private:
  std::string fText;
  std::unique_ptr<BMessage> fModificationMessage;
};
