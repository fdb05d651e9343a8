#pragma once

#include "commands/command_table.h"

class TTagRows;

/** Signs of probable mistakes in the rows, and the keys that lead from one to the next. Belongs to the tag input view,
    on its window's thread. */
class TProblemRows {
public:
  /** Not owned. */
  explicit TProblemRows(TTagRows* rows) : fRows(rows) {}

  /** Sets the sign of a row that is about to be drawn. */
  void Mark(int32 row);
  /** Returns false for other commands. */
  bool Run(TCommandId id);

private:
  void GoToProblem(bool below);
  void GoToUntagged(bool below);

  TTagRows* const fRows;
};
