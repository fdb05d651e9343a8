#pragma once

#include "platform/interface/bitmap.h"
#include "platform/interface/control.h"

/** A button of a tool bar. Its value is whether it is on (pressed in); clicking sends its message and leaves that to
    the program. */
class TToolButton : public BControl {
public:
  /** A bar that lays it out keeps it at least as wide as the frame. */
  TToolButton(BRect frame, const char* name, const BBitmap& bitmap, BMessage* message);

  float LeastWidth() const { return fLeastWidth; }
  /** Shown beside the mouse, and what the button is called by those who listen to the screen. */
  void SetTip(const char* tip);
  /** Flat: framed only under the mouse, with the focus, or while on. */
  void SetFlat(bool flat);

protected:
  std::shared_ptr<display::ControlPeer> MakeControl() override;

private:
  const float fLeastWidth;
  BBitmap fBitmap;
  bool fIsFlat = true;
};

/** A line between two groups of buttons. */
class TSeparatorButton : public BView {
public:
  explicit TSeparatorButton(BRect frame);

protected:
  std::shared_ptr<display::ViewPeer> MakePeer() override;
};
