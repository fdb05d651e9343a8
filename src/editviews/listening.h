#pragma once

#include "commands/command_table.h"
#include "platform/support/types.h"

#include <optional>

class Sonivo_FrontEnd;
class TLineTimes;
class TNudgeReplay;
class TTagRows;

/** A part of the song around a line. */
struct TLinePart {
  int32 fromMs = 0;
  std::optional<int32> toMs; // nothing: the song plays on
  bool operator==(const TLinePart&) const = default;
};

/** What kHearBefore … kHearLoop play of a row with a tag. The row ends where a later one with a later tag begins, or
   with the song (0 or less: of unknown length). Nothing for a row without a tag, and nothing before one at 0. Pure. */
std::optional<TLinePart> line_part(TCommandId id, const TLineTimes& times, int32 row, int32 durationMs);

/** The keys that let the user hear the selected line, or loop over it; the loop follows the selection. Belongs to the
   tag input view, on its window's thread. */
class TListening {
public:
  /** Nothing is owned. */
  TListening(TTagRows* rows, TNudgeReplay* replay, Sonivo_FrontEnd* frontEnd)
      : fRows(rows), fReplay(replay), fFrontEnd(frontEnd) {}

  /** Returns false for other commands, some of which end the loop. */
  bool Run(TCommandId id);
  /** Another row was selected, or its tag has changed: moves the loop. */
  void RowChanged();
  /** The player ends a loop by itself when the user seeks or pauses there. */
  bool IsLooping();

private:
  void Hear(TCommandId id);
  void Loop();

  TTagRows* const fRows;
  TNudgeReplay* const fReplay;
  Sonivo_FrontEnd* const fFrontEnd;
  std::optional<TLinePart> fLoop;
  bigtime_t fLoopSinceUs = 0;
};
