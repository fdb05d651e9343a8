#pragma once

#include "toolkit/krv_dlg_win.h"

#include "platform/app/message.h"

#include <functional>
#include <string>

class BButton;
class BStringView;
class BTextControl;
class TKRVDlgView;

/** The field of the message that carries what was typed. */
inline constexpr const char* kInputField = "_SmplIptData";

/** Asks for one line of text, which it sends with its message to its target. Closing, cancelling and sending hide it;
    shown again, it holds the last text, selected. */
class TSimpleInputWin : public TKRVDlgWin {
public:
  /** Says what is wrong with a text; empty when it can be sent. On the window's thread. */
  using TCheck = std::function<std::string(const std::string& text)>;

  TSimpleInputWin();
  ~TSimpleInputWin() override;

  struct TLabels {
    std::string title;
    std::string input;
    std::string go;
    std::string cancel;
  };
  /** A letter that stands before a button's label by itself presses it with the Alt key. */
  void SetLabels(const TLabels& labels);
  void SetMessage(const BMessage& message, const BMessenger& target);
  /** A text that does not pass is not sent; the window stays and shows what the check said. */
  void SetCheck(TCheck check) { fCheck = std::move(check); }

  void Show() override;
  void MessageReceived(BMessage* message) override;

private:
  void Go();
  void ShowHint(const std::string& text);
  void HideHint();

  BMessage fMessage;
  BMessenger fTarget;
  TCheck fCheck;
  TKRVDlgView* fView;  // the main child
  BStringView* fLabel; // its children
  BTextControl* fField;
  BButton* fGo;
  BButton* fCancel;
  BStringView* fHint = nullptr; // while something is wrong
};
