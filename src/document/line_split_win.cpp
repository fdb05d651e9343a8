#include "document/line_split_win.h"

#include "document/document_answer.h"
#include "document/edit_session.h"
#include "editviews/tag_input_view.h"
#include "interapp/inter_app_prefs.h"
#include "language/llt.h"
#include "lyrics/document.h"
#include "lyrics/line_parts.h"
#include "platform/app/looper_lock.h"
#include "platform/app/message.h"
#include "platform/interface/button.h"
#include "platform/interface/string_view.h"
#include "platform/interface/text_control.h"
#include "platform/interface/view.h"
#include "plugin/message_codes.h"
#include "toolkit/krv_dlg_view.h"
#include "toolkit/placement.h"

TLineSplitWin::TLineSplitWin()
    : TKRVDlgWin(""), fView(new TKRVDlgView("SplitLine")), fLabel(new BStringView({}, "SplitLabel", "")),
      fField(new BTextControl({}, "SplitText", "", "")),
      fCancel(new BButton({}, "SplitCancel", "", new BMessage(B_QUIT_REQUESTED))),
      fGo(new BButton({}, "SplitGo", "", new BMessage(kMsgInputGo))) {
  fView->AddRow({fLabel});
  fView->AddRow({fField});
  fView->AddButtons({fCancel, fGo});
  fView->SetDefaultButton(fGo);
  fView->SetCancelButton(fCancel);
  AddMainChild(fView);
}

void TLineSplitWin::Relabel() {
  SetTitle(gLLT->Text("Split_Line_Win_Title"));
  fLabel->SetText(gLLT->Text("StrView_Split_Line"));
  fField->SetLabel(gLLT->Text("StrView_Split_Line"));
  fGo->SetLabel(accelerator_label("S", gLLT->Text("Button_Split")).c_str());
  fCancel->SetLabel(accelerator_label("C", gLLT->Text("Button_Cancel")).c_str());
  Fit();
}

void TLineSplitWin::Ask(const std::string& text, const BMessage& request, const BMessenger& target) {
  fRequest = std::make_unique<BMessage>(request);
  fTarget = target;
  Relabel();
  fField->SetText(text.c_str());
  fField->MakeFocus();
  fField->PlaceCaretAfter(first_half(text));
}

void TLineSplitWin::MessageReceived(BMessage* message) {
  if (message->what == kMsgInputGo) return Answer();
  TKRVDlgWin::MessageReceived(message);
}

void TLineSplitWin::Answer() {
  if (!fRequest) return;
  const auto [before, after] = fField->TextAroundCaret();
  BMessage answer(*fRequest);
  answer.AddString("Before", before);
  answer.AddString("After", after);
  fTarget.SendMessage(&answer, BMessenger(), 0);
  PutAway();
}

TLineSplitter::~TLineSplitter() {
  if (fWindow && fWindow->Lock()) fWindow->Quit();
}

bool TLineSplitter::Handle(const BMessage& message) {
  if (message.what == kMsgSplitLine) {
    Ask(message);
    return true;
  }
  if (message.what != kMsgSplitLineAt) return false;
  Split(message);
  return true;
}

void TLineSplitter::Ask(const BMessage& request) {
  std::string text;
  if (request.FindString("Text", &text) != B_OK) return;
  BMessage answer(request);
  answer.what = kMsgSplitLineAt;
  answer.AddInt32("Document", fDocument->Number());
  if (!fWindow) {
    fWindow = new TLineSplitWin;
    move_beside(fWindow, fOwner->Window()->Frame());
  }
  const TLooperLock lock(fWindow);
  if (!lock) return;
  fWindow->Ask(text, answer, BMessenger(fOwner));
  fWindow->StandInFrontOf(fOwner->Window()->Proxy());
  fWindow->BringUp();
}

void TLineSplitter::Split(const BMessage& answer) {
  if (is_for_another_document(answer, *fDocument)) return;
  if (fSession->Mode() == TEditMode::kFreeEdit) return fSession->Report(gLLT->Text("StatBarStr_Line_Has_Changed"));
  fSession->TagInput().LineCommands().SplitLine(answer);
}
