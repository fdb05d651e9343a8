#pragma once

#include "lyrics/proposal.h"
#include "platform/app/message.h"
#include "platform/app/messenger.h"
#include "toolkit/krv_win.h"

#include <string>
#include <vector>

class BButton;
class BStringView;
class TKRVDlgView;
class TProposalList;

/** A proposed tag with what the list shows of it. */
struct TProposalRow {
  TProposedTag tag; // times in the song
  std::string from; // tags, as far as they can show the times
  std::string to;
  int32 differenceMs; // of the tags
  std::string text;   // of the line
};

/** Lists the proposed times beside the present ones. Answers with kMsgAcceptProposals for the selected ones or all, and
    kMsgHearProposal for one that is to be heard. Closing hides it; TProposer owns and quits it. */
class TProposalWin : public TKRVWin {
public:
  explicit TProposalWin(BRect frame);

  /** With the window locked. `answer` gets the fields of the messages above. */
  void Offer(std::vector<TProposalRow> rows, const BMessage& answer, const BMessenger& target);
  void MessageReceived(BMessage* message) override;

private:
  void Relabel();
  void Accept(bool all);
  void Hear();
  void RowsChanged();

  BMessage fAnswer;
  BMessenger fTarget;
  TKRVDlgView* fView;   // the main child
  BStringView* fLegend; // fLegend to fAll: its children
  TProposalList* fList;
  BButton* fClose;
  BButton* fSelected;
  BButton* fAll;
};
