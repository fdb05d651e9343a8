#pragma once

#include "toolkit/krv_win.h"

#include <string>
#include <vector>

class BButton;
class BStringView;
class BTextView;
class BView;

/** Shows how the file and the document differ, as text. Closing hides it. */
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

/** Shows differences in front of a view's window. The window for them is created at first use, and quit by the
    destructor. On the view's thread. */
class TDifferences {
public:
  /** `owner` is attached when something is shown; not owned. */
  explicit TDifferences(const BView* owner) : fOwner(owner) {}
  TDifferences(const TDifferences&) = delete;
  TDifferences& operator=(const TDifferences&) = delete;
  ~TDifferences();

  /** `name` is that of the file; `legendKey` names the text that tells what "-" and "+" mean. */
  void Show(const std::string& name, const char* legendKey, const std::vector<std::string>& before,
            const std::vector<std::string>& after);

private:
  const BView* const fOwner;
  TDifferencesWin* fWindow = nullptr;
};
