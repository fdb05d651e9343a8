#pragma once

#include "platform/app/messenger.h"
#include "toolkit/krv_dlg_win.h"

#include <memory>
#include <string>

class BButton;
class BStringView;
class BTextControl;
class TKRVDlgView;

/** Asks where to split a line: shows its text, which is split at the caret. Answers with kMsgSplitLineAt. Closing hides
    it; the document's view owns and quits it. */
class TLineSplitWin : public TKRVDlgWin {
public:
  TLineSplitWin();

  /** With the window locked. `request` is the answer without its texts. */
  void Ask(const std::string& text, const BMessage& request, const BMessenger& target);
  void MessageReceived(BMessage* message) override;

private:
  void Relabel();
  void Answer();

  std::unique_ptr<BMessage> fRequest; // null until asked
  BMessenger fTarget;
  TKRVDlgView* fView;  // the main child
  BStringView* fLabel; // fLabel to fGo: its children
  BTextControl* fField;
  BButton* fCancel;
  BButton* fGo;
};

/** Asks beside `owner`, in the window of the pointer, which is created when it is null. */
void ask_where_to_split(TLineSplitWin** window, const BWindow* owner, const std::string& text, const BMessage& request,
                        const BMessenger& target);
