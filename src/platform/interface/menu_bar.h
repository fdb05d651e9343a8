#pragma once

#include "platform/interface/menu.h"

/** The row of menus at the top of a window. Takes its preferred height when attached. Menus and items are added as to
 * any menu. */
class BMenuBar : public BMenu {
public:
  BMenuBar(BRect frame, const char* name, uint32 resizingMode = B_FOLLOW_LEFT_RIGHT | B_FOLLOW_TOP);

  void AttachedToWindow() override;
  void MessageReceived(BMessage* message) override;
  /** Hands changes to the display now; done by itself after the message in which they were made. */
  void Flush();

protected:
  void Changed() override;
  BWindow* RootWindow() const override { return Window(); }
  std::shared_ptr<display::ViewPeer> MakePeer() override;

private:
  bool fFlushPending = false;
};
