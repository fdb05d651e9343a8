#pragma once

#include "platform/app/message_filter.h"
#include "platform/interface/view.h"

#include <string>

/** The tip that stands on the screen by the keyboard's doing: below the view that has the focus, one at a time. */
class TToolTipWin {
public:
  void ShowAt(BView* view);
  /** Nothing when the tip of another view stands there. */
  void HideFrom(BView* view);

private:
  const BView* fView = nullptr; // compared, never followed
};

/** Decides when a tip is shown: seen from the window's messages, when the Tab key brings the focus to a view with a tip
    and when it leaves. What the mouse does the display sees to by itself. */
class TTTSpy : public BMessageFilter {
public:
  TTTSpy();
  filter_result Filter(BMessage* message, BHandler** target) override;

private:
  TToolTipWin fWindow;
};

/** Tips for the views of one window. Made and ended with the window locked or on its thread, before the window is. */
class TToolTip {
public:
  explicit TToolTip(BWindow* window);
  TToolTip(const TToolTip&) = delete;
  TToolTip& operator=(const TToolTip&) = delete;
  ~TToolTip();

  /** What the view is for, in a few words: its tip, and its name for those who listen to the screen. */
  static void SetTip(BView* view, const std::string& text);

private:
  BWindow* fWindow;
  TTTSpy* fSpy;
};
