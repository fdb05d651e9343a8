#pragma once

#include "toolkit/tool_button.h"
#include "toolkit/tool_tip.h"

#include <memory>
#include <vector>

/** A row of buttons with images. Takes its preferred height when attached, and places the buttons itself, from left to
    right. The buttons are its children. */
class TToolBar : public BView {
public:
  TToolBar(BRect frame, const char* name, uint32 resizingMode = B_FOLLOW_LEFT_RIGHT | B_FOLLOW_TOP);

  /** The bar gives the button its place, and its size: that of all buttons, or the frame's width if that is larger.
      The message goes to the window, unless the button is given another target. */
  TToolButton* AppendButton(BRect frame, const char* name, const BBitmap& bitmap, BMessage* message);
  void AppendSeparator();

  /** Buttons are counted from the left, separators are not. Null for a name or an index that there is not. */
  TToolButton* FindItem(const char* name) const;
  TToolButton* ButtonAt(int32 index) const;
  /** -1 for what is no button of this bar. */
  int32 IndexOf(const TToolButton* button) const;
  int32 CountButtons() const { return static_cast<int32>(fButtons.size()); }

  /** Flat or raised drawing of all its buttons, also of those to come. */
  void SetFlat(bool flat);
  bool IsFlat() const { return fIsFlat; }
  /** What the buttons take; narrower bars cut them. Once attached. */
  float PreferredWidth() const;

  void AllAttached() override;
  void DetachedFromWindow() override;

private:
  void LayOut();

  std::vector<TToolButton*> fButtons;
  bool fIsFlat = true;
  std::unique_ptr<TToolTip> fTips; // while attached
};
