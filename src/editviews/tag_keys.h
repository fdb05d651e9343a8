#pragma once

#include "commands/command_table.h"
#include "lyrics/stamp.h"

#include <optional>

class Sonivo_FrontEnd;
class TNudgeReplay;
class TStampHabit;
class TTagRows;
struct TViewChoices;

/** The keys that change the tag in front of the selected line. Belongs to the tag input view, on its window's thread.
 */
class TTagKeys {
public:
  struct TParts {
    TTagRows* rows;
    TStampHabit* habit;
    TNudgeReplay* replay;
    Sonivo_FrontEnd* frontEnd;
    const TViewChoices* choices;
  };
  /** Nothing is owned. */
  explicit TTagKeys(const TParts& parts) : fParts(parts) {}

  /** `keyUs`: when its key was pressed, if it has one. Returns false for other commands. */
  bool Run(TCommandId id, std::optional<bigtime_t> keyUs);
  /** Stamps the selected line. Blocks for 20 ms, so that the player can answer. */
  void InputTagRqtd(std::optional<bigtime_t> keyUs);
  /** Moves its tag by one step: '+' or '-'. */
  void IncDecTagRqtd(char key);
  void RemoveTagRqtd();

private:
  /** Moves the tag of the line by so much, if its form can show that. */
  void NudgeBy(int32 stepMs);
  void Nudged(int32 row, const TNudgedLine& nudged);

  const TParts fParts;
};
