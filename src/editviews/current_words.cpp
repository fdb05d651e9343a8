#include "editviews/current_words.h"

#include "editviews/tag_rows.h"

TWordStamper& TCurrentWords::Read() {
  const int32 row = fRows->Current();
  const std::string line = fRows->TextOf(row);
  row == fRow ? fWords.Update(line) : fWords.Start(line);
  fRow = row;
  return fWords;
}

void TCurrentWords::SelectionChanged() {
  if (fRows->Current() != fRow) Forget();
}

TWordStamper& TCurrentWords::ReadAtEnd(int32 row) {
  fWords.Start(fRows->TextOf(row));
  fWords.MoveToEnd();
  fRow = row;
  return fWords;
}

void TCurrentWords::Follow(int32 row, const std::string& before, const std::string& after) {
  fWords.Follow(before, after);
  fRow = row == fRows->Current() ? row : -1;
}
