#pragma once

#include "toolkit/krv_view.h"

#include <functional>

class BButton;
class BCheckBox;
class BMessage;
class BStringView;
class BTextControl;

/** A bar in a TKRVWin, above its main child, that finds and replaces text; hidden until it is opened. Return searches
    forward, Shift+Return backward, Escape closes. Owned by its window, on its thread. */
class TFindBar : public TKRVView {
public:
  /** `finder` gets kMsgFind and kMsgReplace. `giveFocusBack` is called when the bar closes. */
  TFindBar(BRect frame, const char* name, BHandler* finder, std::function<void()> giveFocusBack);

  /** Shows the bar, with or without the field for the replacement, and selects the text to be found. */
  void Open(bool replaces);
  /** Searches for the text of the bar; opens it when there is none. */
  void FindNext(bool backward);
  void LanguageChanged();

  void AllAttached() override;
  void KeyDown(const char* bytes, int32 count) override;
  void MessageReceived(BMessage* message) override;

protected:
  void LayOut() override;

private:
  BButton* AddButton(const char* name, uint32 code, const char* field, bool value);
  BCheckBox* AddBox(const char* name, bool isOn);
  void ReplaceRqtd(bool all);
  void Send(uint32 code, bool backward, bool all);
  void Close();
  float WidthOf(BView* view) const;
  /** Places a label, its field and more views from left to right, in as many rows as they need; returns the bottom. */
  float PlaceRow(const std::vector<BView*>& views, float top);

  BHandler* const fFinder;
  const std::function<void()> fGiveFocusBack;
  BStringView* fTextLabel; // the children
  BTextControl* fText;
  BButton* fPrevious;
  BButton* fNext;
  BCheckBox* fCase;
  BCheckBox* fNoTags;
  BButton* fClose;
  BStringView* fWithLabel;
  BTextControl* fWith;
  BButton* fReplace;
  BButton* fReplaceAll;
  bool fReplaces = false;
};
