#pragma once

#include "editviews/word_row.h"

class TCurrentWords;
class TSungRow;
class TTagRows;
struct TViewChoices;

/** Word by word: how the rows show their words, and what is shown of the current one's times. Belongs to the tag input
    view, on its window's thread. */
class TWordRows {
public:
  struct TParts {
    TTagRows* rows;
    TCurrentWords* words;
    const TSungRow* sung;
    const TViewChoices* choices;
  };
  /** Nothing is owned. */
  explicit TWordRows(const TParts& parts) : fParts(parts) {}

  /** Sets how a row that is about to be drawn shows its words. */
  void Mark(int32 row);
  /** Reports the times of the current line to the view's listener. Rows are drawn after every change of it. */
  void ReportTimes();
  /** Marks the word of the sung row that is sung at this position. */
  void MarkSung(std::optional<int32> positionMs);
  /** The rows are other ones now: the listener gets their times again. */
  void ForgetTimes() { fReported.reset(); }
  void ForgetSung() { fSungWord.reset(); }

private:
  std::optional<TWordRow> RowOf(int32 row) const;

  const TParts fParts;
  std::optional<size_t> fSungWord;      // of the sung row
  std::optional<std::string> fReported; // as last reported to the listener
};
