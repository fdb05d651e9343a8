#pragma once

#include "toolkit/tool_button.h"
#include "toolkit/tool_tip.h"

#include <memory>
#include <vector>

/** A tool bar. Takes its preferred height when attached and lays its buttons (its children) out from left to right. */
class TToolBar : public BView {
public:
  TToolBar(BRect frame, const char* name, uint32 resizingMode = B_FOLLOW_LEFT_RIGHT | B_FOLLOW_TOP);

  /** All buttons have the same size, except that one with a wider frame is as wide as that. The message goes to the
      window unless the button gets another target. */
  TToolButton* AppendButton(BRect frame, const char* name, const BBitmap& bitmap, BMessage* message);
  void AppendSeparator();

  /** Indices count buttons from the left, without separators. Null if there is none. */
  TToolButton* FindItem(const char* name) const;
  TToolButton* ButtonAt(int32 index) const;
  /** -1 if the button is not in this bar. */
  int32 IndexOf(const TToolButton* button) const;
  int32 CountButtons() const { return static_cast<int32>(fButtons.size()); }

  /** Flat or raised drawing of all buttons, including those added later. */
  void SetFlat(bool flat);
  bool IsFlat() const { return fIsFlat; }
  /** Width at which all buttons are visible. Once attached. */
  float PreferredWidth() const;

  void AllAttached() override;
  void DetachedFromWindow() override;

private:
  void LayOut();

  std::vector<TToolButton*> fButtons;
  bool fIsFlat = true;
  std::unique_ptr<TToolTip> fTips; // while attached
};
