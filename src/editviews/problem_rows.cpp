#include "editviews/problem_rows.h"

#include "editviews/problem_texts.h"
#include "editviews/tag_input_item.h"
#include "editviews/tag_rows.h"
#include "language/llt.h"
#include "lyrics/line_problems.h"

void TProblemRows::Mark(int32 row) {
  if (TTagInputItem* const item = fRows->Item(row)) item->SetProblem(problem_at(fRows->Times(), row));
}

bool TProblemRows::Run(TCommandId id) {
  using enum TCommandId;
  switch (id) {
  case kNextProblem:
  case kPreviousProblem:
    return GoToProblem(id == kNextProblem), true;
  case kNextUntagged:
  case kPreviousUntagged:
    return GoToUntagged(id == kNextUntagged), true;
  default:
    return false;
  }
}

void TProblemRows::GoToProblem(bool below) {
  const std::optional<int32> row = nearest_problem(fRows->Times(), fRows->Current(), below);
  if (!row) return fRows->Report(gLLT->Text(below ? "StatBarStr_No_Problem_Below" : "StatBarStr_No_Problem_Above"));
  fRows->GoTo(*row);
  fRows->Report(gLLT->Text("StatBarStr_Problem_1") + std::to_string(*row + 1) + gLLT->Text("StatBarStr_Problem_2") +
                problem_text(problem_at(fRows->Times(), *row)));
}

void TProblemRows::GoToUntagged(bool below) {
  const int32 step = below ? 1 : -1;
  int32 row = fRows->Current() + step;
  while (fRows->Has(row) && !lacks_tag(fRows->TextOf(row))) row += step;
  if (!fRows->Has(row))
    return fRows->Report(gLLT->Text(below ? "StatBarStr_No_Untagged_Below" : "StatBarStr_No_Untagged_Above"));
  fRows->GoTo(row);
  fRows->Report("StatBarStr_Untagged", row + 1);
}
