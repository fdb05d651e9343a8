#pragma once

#include "commands/command_table.h"
#include "editviews/following.h"

#include <optional>

class Sonivo_FrontEnd;
class TTagRows;

/** The row that is sung: its mark, the list that follows it, and the keys for both. Belongs to the tag input view, on
    its window's thread. */
class TSungRow {
public:
  /** Nothing is owned. */
  TSungRow(TTagRows* rows, Sonivo_FrontEnd* frontEnd, TViewChoices* choices)
      : fRows(rows), fFrontEnd(frontEnd), fChoices(choices), fFollowing(choices) {}

  /** -1 for none. */
  int32 Row() const { return fRow; }
  /** Marks the row that is sung at this position; none while the song does not play. */
  void Mark(std::optional<int32> positionMs);
  /** Brings it into sight, unless the user has just pressed a key or does not want that. */
  void Follow();
  void KeyPressed();
  /** The rows are other ones now. */
  void Forget() { fRow = -1; }
  /** Returns false for other commands. */
  bool Run(TCommandId id);

private:
  void ToggleFollowing();
  void GoThere();

  TTagRows* const fRows;
  Sonivo_FrontEnd* const fFrontEnd;
  TViewChoices* const fChoices;
  TFollowing fFollowing;
  int32 fRow = -1;
};
