#pragma once

#include "commands/command_table.h"
#include "platform/support/types.h"

class BMessage;
class TTagRows;

/** The tag input view's commands on whole lines. Each change is one step of the history. Belongs to the view, on its
    window's thread. */
class TLineCommands {
public:
  /** Not owned. */
  explicit TLineCommands(TTagRows* rows) : fRows(rows) {}

  /** A command on the selected lines. Returns false for other commands. */
  bool Run(TCommandId id);
  /** The answer to kMsgSplitLine: the line's text in two parts. Refused when the line has changed meanwhile. */
  void SplitLine(const BMessage& answer);

private:
  void CutLines();
  void CopyLines();
  void PasteLines();
  void DeleteLines();
  void InsertLine();
  void MoveLines(bool down);
  void JoinLines();
  void SplitLineRqtd();
  void ShiftRqtd(int32 firstRow, int32 count);

  TTagRows* const fRows;
};
