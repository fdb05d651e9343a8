#pragma once

#include "toolkit/krv_dlg_win.h"

#include "platform/app/message.h"

#include <functional>
#include <string>

class BButton;
class BStringView;
class BTextControl;
class TKRVDlgView;

/** Message field with the text typed. */
inline constexpr const char* kInputField = "_SmplIptData";

/** Asks for one line of text and sends it with its message to its target. Closing, cancelling and sending hide it;
    shown again, it has the last text, selected. */
class TSimpleInputWin : public TKRVDlgWin {
public:
  /** Returns an error message, empty if the text is valid. Called on the window's thread. */
  using TCheck = std::function<std::string(const std::string& text)>;

  TSimpleInputWin();
  ~TSimpleInputWin() override;

  struct TLabels {
    std::string title;
    std::string input;
    std::string go;
    std::string cancel;
  };
  /** A letter set off in front of a button's label presses it with the Alt key. */
  void SetLabels(const TLabels& labels);
  void SetMessage(const BMessage& message, const BMessenger& target);
  /** An invalid text is not sent; the window stays open and shows the error message. */
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
  BStringView* fHint = nullptr; // null without an error message
};
