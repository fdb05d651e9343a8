#pragma once

#include "toolkit/krv_win.h"

#include <string>

class BButton;
class BStringView;
class BTextView;

/** Shows how the file and the document differ, as text. Closing hides it; the document's view owns and quits it. */
class TDifferencesWin : public TKRVWin {
public:
  explicit TDifferencesWin(BRect frame);

  /** With the window locked. `name` is that of the file; `legend` tells what "-" and "+" mean. */
  void SetContent(const std::string& name, const std::string& legend, const std::string& differences);

private:
  BStringView* fLegend; // fLegend to fClose: in the window
  BTextView* fText;
  BButton* fClose;
};

/** Shows the differences in front of `owner`, in the window of the pointer, which is created when it is null. */
void show_differences(TDifferencesWin** window, const BWindow* owner, const std::string& name,
                      const std::string& legend, const std::string& differences);
