#pragma once

#include "lyrics/word_stamper.h"
#include "platform/support/types.h"

class TTagRows;

/** The words of the current row while they are being timed. Belongs to the tag input view, on its window's thread. */
class TCurrentWords {
public:
  /** Not owned. */
  explicit TCurrentWords(const TTagRows* rows) : fRows(rows) {}

  /** Those of the current row; its caret stays where it was in the same row. */
  TWordStamper& Read();
  /** As last read. */
  const TWordStamper& Stamper() const { return fWords; }
  /** The row that was read; -1 for none. */
  int32 Row() const { return fRow; }
  /** The next `Read` begins at the first word. */
  void Forget() { fRow = -1; }
  void SelectionChanged();
  /** Reads another row, with the caret after its last word. */
  TWordStamper& ReadAtEnd(int32 row);
  /** After undo and redo: the caret is at the word whose time was removed, or after the one that was stamped. */
  void Follow(int32 row, const std::string& before, const std::string& after);

private:
  const TTagRows* const fRows;
  TWordStamper fWords;
  int32 fRow = -1;
};
