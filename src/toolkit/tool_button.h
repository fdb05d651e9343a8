#pragma once

#include "platform/interface/bitmap.h"
#include "platform/interface/control.h"

/** A button of a tool bar. Its value is 1 while it is on (pressed in); clicking sends its message, and only the program
    changes the value. */
class TToolButton : public BControl {
public:
  /** The tool bar keeps it at least as wide as the frame. */
  TToolButton(BRect frame, const char* name, const BBitmap& bitmap, BMessage* message);

  float LeastWidth() const { return fLeastWidth; }
  /** Sets the tool tip and the accessible name; the tip also shows the keys of the command, if any. */
  void SetTip(const char* tip, const std::string& keys = {});
  /** Flat: framed only under the mouse, with the focus, or while on. */
  void SetFlat(bool flat);

  /** A dot at the corner of the image; screen readers get the description, which is empty without one. */
  void SetBadge(const std::string& description);

protected:
  std::shared_ptr<display::ControlPeer> MakeControl() override;

private:
  const float fLeastWidth;
  BBitmap fBitmap;
  bool fIsFlat = true;
  bool fHasBadge = false;
};

/** A line between two groups of buttons. */
class TSeparatorButton : public BView {
public:
  explicit TSeparatorButton(BRect frame);

protected:
  std::shared_ptr<display::ViewPeer> MakePeer() override;
};
