#include "editviews/word_rows.h"

#include "editviews/current_words.h"
#include "editviews/sung_row.h"
#include "editviews/tag_input_item.h"
#include "editviews/tag_rows.h"
#include "editviews/tracked_edit_view.h"
#include "editviews/view_choices.h"
#include "language/llt.h"
#include "platform/interface/list_view.h"

void TWordRows::Mark(int32 row) {
  if (TTagInputItem* const item = fParts.rows->Item(row)) item->SetWords(RowOf(row));
}

void TWordRows::ReportTimes() {
  const bool isOn = fParts.choices->timesWords;
  const TWordStamper& words = fParts.words->Stamper();
  std::optional<std::string> times;
  if (isOn && fParts.words->Row() >= 0) times = word_times_text(words.Line(), words.NextUnit());
  TEditListener* const listener = fParts.rows->Listener();
  if (times == fReported || !listener || (isOn && !times)) return;
  fReported = times;
  listener->ShowWordTimes(times);
}

std::optional<TWordRow> TWordRows::RowOf(int32 row) const {
  if (!fParts.choices->timesWords) return {};
  TWordRow shown;
  if (row == fParts.sung->Row()) shown.sung = fSungWord;
  if (row != fParts.rows->Current()) return shown;
  const TWordStamper& words = fParts.words->Read();
  const TTimedLine& line = words.Line();
  if (line.CountUnits() == 0) return shown;
  shown.next = words.NextUnit();
  shown.caret = words.Caret();
  shown.spoken = std::to_string(line.CountTimed()) + gLLT->Text("StatBarStr_Words_Timed_1") +
                 std::to_string(line.CountUnits()) + gLLT->Text("StatBarStr_Words_Timed_2") + line.TextOf(*shown.next);
  return shown;
}

void TWordRows::MarkSung(std::optional<int32> positionMs) {
  const int32 row = fParts.sung->Row();
  std::optional<size_t> sung;
  if (positionMs && fParts.rows->Has(row)) {
    const long writtenMs = *positionMs + fParts.rows->Times().OffsetMs();
    const std::string line = fParts.rows->TextOf(row);
    sung = TTimedLine(line).UnitSungAt(writtenMs, sung_start(line, writtenMs));
  }
  if (sung == fSungWord) return;
  fSungWord = sung;
  fParts.rows->List().InvalidateItem(row);
}
