#pragma once

#include "document/proposal_win.h"
#include "platform/interface/list_view.h"

#include <memory>
#include <vector>

/** The proposals, each a row: number of the line, its tag, the proposed one, how far they are apart, and its text.
   Return or a double click sends the window kMsgHearProposal. On the window's thread. */
class TProposalList : public BListView {
public:
  TProposalList();
  ~TProposalList() override;

  /** Selects the first one. */
  void SetRows(std::vector<TProposalRow> rows);
  /** Removes the selected ones, or all, and returns them. */
  std::vector<TProposedTag> Take(bool all);
  /** Null when the list is empty. */
  const TProposedTag* Current() const;
  void Invoke() override;

private:
  class TItem;
  void ShowItems(int32 selected);

  std::vector<std::unique_ptr<TItem>> fRows;
};
