#pragma once

#include "platform/interface/menu.h"

/** The menu bar of a window. Takes its preferred height when attached. */
class BMenuBar : public BMenu {
public:
  BMenuBar(BRect frame, const char* name, uint32 resizingMode = B_FOLLOW_LEFT_RIGHT | B_FOLLOW_TOP);

  void AttachedToWindow() override;
  void MessageReceived(BMessage* message) override;
  /** Sends changes to the display now instead of after the current message. */
  void Flush();

protected:
  void Changed() override;
  BWindow* RootWindow() const override { return Window(); }
  std::shared_ptr<display::ViewPeer> MakePeer() override;

private:
  bool fFlushPending = false;
};
