#pragma once

#include "commands/command_table.h"

class Sonivo_FrontEnd;
class TNudgeReplay;
class TTagRows;

/** The keys that control the player from the tag input view. Belongs to the view, on its window's thread. */
class TPlayerKeys {
public:
  /** Nothing is owned. */
  TPlayerKeys(TTagRows* rows, TNudgeReplay* replay, Sonivo_FrontEnd* frontEnd)
      : fRows(rows), fReplay(replay), fFrontEnd(frontEnd) {}

  /** Returns false for other commands. */
  bool Run(TCommandId id);
  /** The player seeks to the time of the selected line, or so much before it. */
  void PlayFrom(int32 leadInMs);

private:
  void PlayPause();
  void SeekBy(int32 stepMs);
  void GoToStart();

  TTagRows* const fRows;
  TNudgeReplay* const fReplay;
  Sonivo_FrontEnd* const fFrontEnd;
};
