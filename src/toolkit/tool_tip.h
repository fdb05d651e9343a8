#pragma once

#include "platform/app/message_filter.h"
#include "platform/interface/view.h"

#include <string>

/** Shows the tool tip of the view that received keyboard focus; at most one at a time. */
class TToolTipWin {
public:
  void ShowAt(BView* view);
  /** No effect when another view's tip is shown. */
  void HideFrom(BView* view);

private:
  const BView* fView = nullptr; // compared, never followed
};

/** Shows a view's tip when the Tab key moves the focus to it, and hides it when the focus leaves. Hover tool tips, and
    their delay, are left to Qt (`QStyle::SH_ToolTip_WakeUpDelay`). */
class TTTSpy : public BMessageFilter {
public:
  TTTSpy();
  filter_result Filter(BMessage* message, BHandler** target) override;

private:
  TToolTipWin fWindow;
};

/** Tool tips for the views of one window. Created and destroyed with the window locked, before the window is. */
class TToolTip {
public:
  explicit TToolTip(BWindow* window);
  TToolTip(const TToolTip&) = delete;
  TToolTip& operator=(const TToolTip&) = delete;
  ~TToolTip();

  /** Sets the tool tip and the accessible name. */
  static void SetTip(BView* view, const std::string& text);

private:
  BWindow* fWindow;
  TTTSpy* fSpy;
};
