#pragma once

#include "toolkit/krv_view.h"

#include <vector>

class BButton;

/** Content of a dialog: rows of views from the top and a row of buttons at the bottom right, sized to their texts. In a
    larger view the last row grows, in a smaller one the highest row shrinks. Return presses the default button, Escape
   the cancel button. */
class TKRVDlgView : public TKRVView {
public:
  explicit TKRVDlgView(const char* name);

  /** Adds a row and takes ownership of its views; the last one gets the remaining width. */
  void AddRow(const std::vector<BView*>& views);
  /** Removes the row that begins with that view; ownership of its views passes to the caller. */
  void RemoveRow(BView* first);
  /** From left to right, all of the same width. */
  void AddButtons(const std::vector<BButton*>& buttons);
  void SetDefaultButton(BButton* button);
  void SetCancelButton(BButton* button) { fCancel = button; }

  BPoint PreferredSize() override;
  void KeyDown(const char* bytes, int32 count) override;
  /** To be called after texts have changed. */
  void LayOut() override;

private:
  void MoveButtonsToEnd();

  std::vector<std::vector<BView*>> fRows;
  std::vector<BButton*> fButtons;
  BButton* fDefault = nullptr;
  BButton* fCancel = nullptr;
};
