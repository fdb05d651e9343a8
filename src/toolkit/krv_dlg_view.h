#pragma once

#include "toolkit/krv_view.h"

#include <vector>

class BButton;

/** The inside of a dialog: rows of views from the top, and a row of buttons at the bottom right, each as large as its
    texts want. In a larger view the last row grows. Return presses the default button, Escape the cancel button. */
class TKRVDlgView : public TKRVView {
public:
  explicit TKRVDlgView(const char* name);

  /** Views side by side, which it owns from now on; the last one takes what is left of the width. */
  void AddRow(const std::vector<BView*>& views);
  /** The row that begins with the view; the views belong to the caller again. */
  void RemoveRow(BView* first);
  /** From left to right, all of one width. */
  void AddButtons(const std::vector<BButton*>& buttons);
  void SetDefaultButton(BButton* button);
  void SetCancelButton(BButton* button) { fCancel = button; }

  BPoint PreferredSize() override;
  void KeyDown(const char* bytes, int32 count) override;
  /** After texts have changed. */
  void LayOut() override;

private:
  void MoveButtonsToEnd();

  std::vector<std::vector<BView*>> fRows;
  std::vector<BButton*> fButtons;
  BButton* fDefault = nullptr;
  BButton* fCancel = nullptr;
};
