#include "document/proposal_win.h"

#include "document/proposal_list.h"
#include "interapp/inter_app_prefs.h"
#include "language/llt.h"
#include "platform/app/message.h"
#include "platform/interface/button.h"
#include "platform/interface/scroll_view.h"
#include "platform/interface/string_view.h"
#include "plugin/message_codes.h"
#include "toolkit/krv_dlg_view.h"

TProposalWin::TProposalWin(BRect frame)
    : TKRVWin(frame, "", B_DOCUMENT_WINDOW_LOOK), fView(new TKRVDlgView("ProposalView")),
      fLegend(new BStringView({}, "ProposalLegend", "")), fList(new TProposalList),
      fClose(new BButton({}, "ProposalClose", "", new BMessage(B_QUIT_REQUESTED))),
      fSelected(new BButton({}, "ProposalSelected", "", new BMessage(kMsgAcceptSelected))),
      fAll(new BButton({}, "ProposalAll", "", new BMessage(kMsgAcceptAll))) {
  KeepWhenClosed();
  fView->AddRow({fLegend});
  fView->AddRow({fList});
  fView->AddButtons({fClose, fSelected, fAll});
  fView->SetCancelButton(fClose);
  AddMainChild(fView);
}

void TProposalWin::Relabel() {
  SetTitle(gLLT->Text("Propose_Win_Title"));
  fLegend->SetText(gLLT->Text("StrView_Proposals"));
  fList->SetAccessibleName(gLLT->Text("Propose_Win_Title"));
  fClose->SetLabel(accelerator_label("C", gLLT->Text("Button_Close")).c_str());
  fSelected->SetLabel(accelerator_label("S", gLLT->Text("Button_Accept_Selected")).c_str());
  fAll->SetLabel(accelerator_label("A", gLLT->Text("Button_Accept_All")).c_str());
  fView->LayOut();
}

void TProposalWin::Offer(std::vector<TProposalRow> rows, const BMessage& answer, const BMessenger& target) {
  fAnswer = answer;
  fTarget = target;
  Relabel();
  fList->SetRows(std::move(rows));
  RowsChanged();
  fList->MakeFocus();
}

void TProposalWin::RowsChanged() {
  for (BButton* const button : {fSelected, fAll}) button->SetEnabled(!fList->IsEmpty());
}

void TProposalWin::MessageReceived(BMessage* message) {
  switch (message->what) {
  case kMsgAcceptSelected:
  case kMsgAcceptAll:
    return Accept(message->what == kMsgAcceptAll);
  case kMsgHearProposal:
    return Hear();
  default:
    return TKRVWin::MessageReceived(message);
  }
}

/** What was accepted leaves the list; with the last one the window closes. */
void TProposalWin::Accept(bool all) {
  BMessage answer(fAnswer);
  answer.what = kMsgAcceptProposals;
  for (const TProposedTag& tag : fList->Take(all)) {
    answer.AddInt32("Row", tag.line);
    answer.AddInt32("FromMs", tag.fromMs);
    answer.AddInt32("ToMs", tag.toMs);
  }
  fTarget.SendMessage(&answer, BMessenger(), 0);
  RowsChanged();
  if (fList->IsEmpty()) PutAway();
}

void TProposalWin::Hear() {
  const TProposedTag* const tag = fList->Current();
  if (!tag) return;
  BMessage answer(fAnswer);
  answer.what = kMsgHearProposal;
  answer.AddInt32("Row", tag->line);
  answer.AddInt32("ToMs", tag->toMs);
  fTarget.SendMessage(&answer, BMessenger(), 0);
}
