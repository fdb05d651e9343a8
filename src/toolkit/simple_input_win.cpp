#include "toolkit/simple_input_win.h"

#include "platform/interface/button.h"
#include "platform/interface/string_view.h"
#include "platform/interface/text_control.h"
#include "plugin/message_codes.h"
#include "toolkit/krv_dlg_view.h"

#include <utility>

TSimpleInputWin::TSimpleInputWin()
    : TKRVDlgWin(""), fView(new TKRVDlgView("SimpleInput")), fLabel(new BStringView({}, "InputLabel", "")),
      fField(new BTextControl({}, "Input", "", "")), fGo(new BButton({}, "Go", "", new BMessage(kMsgInputGo))),
      fCancel(new BButton({}, "Cancel", "", new BMessage(B_QUIT_REQUESTED))) {
  fView->AddRow({fLabel, fField});
  fView->AddButtons({fCancel, fGo});
  fView->SetDefaultButton(fGo);
  fView->SetCancelButton(fCancel);
  AddMainChild(fView);
}

TSimpleInputWin::~TSimpleInputWin() = default;

void TSimpleInputWin::SetLabels(const TLabels& labels) {
  SetTitle(labels.title.c_str());
  fLabel->SetText(labels.input.c_str());
  fField->SetLabel(labels.input.c_str());
  fGo->SetLabel(labels.go.c_str());
  fCancel->SetLabel(labels.cancel.c_str());
  HideHint(); // it is in the previous language
  Fit();
}

void TSimpleInputWin::SetMessage(const BMessage& message, const BMessenger& target) {
  fMessage = message;
  fTarget = target;
}

void TSimpleInputWin::Show() {
  HideHint();
  fField->MakeFocus();
  fField->SelectAll();
  TKRVDlgWin::Show();
}

void TSimpleInputWin::MessageReceived(BMessage* message) {
  if (message->what == kMsgInputGo) return Go();
  TKRVDlgWin::MessageReceived(message);
}

void TSimpleInputWin::Go() {
  const std::string error = fCheck ? fCheck(fField->Text()) : std::string();
  if (!error.empty()) return ShowHint(error);
  BMessage filled(fMessage);
  filled.AddString(kInputField, fField->Text());
  fTarget.SendMessage(&filled, BMessenger(), 0);
  PutAway();
}

void TSimpleInputWin::ShowHint(const std::string& text) {
  HideHint();
  fHint = new BStringView({}, "Hint", text.c_str());
  fHint->SetFont(be_bold_font);
  fView->AddRow({fHint});
  fField->SetAccessibleDescription(text);
  fField->MakeFocus();
  fField->SelectAll();
  Fit();
}

void TSimpleInputWin::HideHint() {
  if (!fHint) return;
  fView->RemoveRow(fHint);
  delete std::exchange(fHint, nullptr);
  fField->SetAccessibleDescription("");
  Fit();
}
