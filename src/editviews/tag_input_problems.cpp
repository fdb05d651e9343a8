/** Signs of probable mistakes in the rows, and the ways from one to the next. */

#include "editviews/problem_texts.h"
#include "editviews/tag_input_item.h"
#include "editviews/tag_input_view.h"
#include "language/llt.h"
#include "lyrics/line_problems.h"
#include "platform/app/message.h"
#include "platform/interface/list_peer.h"

void TTagInputView::MarkProblems(const BMessage& rowsWanted) {
  int32 row = 0;
  for (int32 i = 0; rowsWanted.FindInt32("row", i, &row) == B_OK; ++i)
    if (TTagInputItem* const item = Item(row)) item->SetProblem(problem_at(fLineTimes, row));
}

void TTagInputView::InvalidateNextTagged(int32 row) {
  for (int32 below = row + 1; below < fLineTimes.CountRows(); ++below)
    if (fLineTimes.OnlyTagOf(below)) return InvalidateItem(below);
}

void TTagInputView::GoTo(int32 row) {
  Select(row);
  ScrollToSelection();
}

void TTagInputView::GoToProblem(bool below) {
  const std::optional<int32> row = nearest_problem(fLineTimes, CurrentSelection(), below);
  if (!row) return Report(gLLT->Text(below ? "StatBarStr_No_Problem_Below" : "StatBarStr_No_Problem_Above"));
  GoTo(*row);
  Report(gLLT->Text("StatBarStr_Problem_1") + std::to_string(*row + 1) + gLLT->Text("StatBarStr_Problem_2") +
         problem_text(problem_at(fLineTimes, *row)));
}

void TTagInputView::GoToUntagged(bool below) {
  const int32 step = below ? 1 : -1;
  int32 row = CurrentSelection() + step;
  while (Item(row) && !lacks_tag(Item(row)->Text())) row += step;
  if (!Item(row)) return Report(gLLT->Text(below ? "StatBarStr_No_Untagged_Below" : "StatBarStr_No_Untagged_Above"));
  GoTo(row);
  Report(gLLT->Text("StatBarStr_Untagged") + std::to_string(row + 1));
}
