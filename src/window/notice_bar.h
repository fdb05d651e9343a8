#pragma once

#include "document/notice.h"
#include "toolkit/krv_view.h"

#include <deque>
#include <functional>
#include <vector>

class BButton;
class BStringView;

/** A bar in a TKRVWin, above its main child, that shows the first of the queued notices: text, buttons, and a button
    that closes it. Hidden while there is none. Never takes the keyboard focus by itself, nor by a click; Tab reaches
   its buttons, and Escape closes the notice while one of them has the focus. Owned by its window, on its thread. */
class TNoticeBar : public TKRVView, public TNoticeBoard {
public:
  /** `giveFocusBack` is called when a notice goes that had the keyboard focus. */
  TNoticeBar(BRect frame, const char* name, std::function<void()> giveFocusBack);

  void ShowNotice(const TNotice& notice) override;
  void RemoveNotice(int32 id) override;
  [[nodiscard]] bool HasNotice(int32 id) const override;
  /** The close button gets its name in the current language. */
  void LanguageChanged();

  void AllAttached() override;
  void Draw(BRect updateRect) override;
  void KeyDown(const char* bytes, int32 count) override;
  void MessageReceived(BMessage* message) override;

protected:
  void LayOut() override;

private:
  void ShowFirst();
  void MakeButtons(const std::vector<TNoticeButton>& buttons);
  void DeleteButtons();
  float PlaceSideBySide(float width, float rowHeight);
  float PlaceInRows(float width, float rowHeight);
  void ButtonPressed(const BMessage& message);
  void Close();
  [[nodiscard]] bool HasFocus() const;

  const std::function<void()> fGiveFocusBack;
  std::deque<TNotice> fNotices; // the first one is shown
  BStringView* fText;           // fText, fClose and fButtons are children
  BButton* fClose;
  std::vector<BButton*> fButtons;
};
