#pragma once

#include "commands/command_table.h"

#include <optional>
#include <string>

class Sonivo_FrontEnd;
class TCurrentWords;
class TNudgeReplay;
class TStampHabit;
class TTagRows;
struct TViewChoices;

/** A key was pressed or released. */
struct TKeyEvent {
  bigtime_t whenUs = 0;
  int32 scanCode = 0; // of one key the same for both
};

/** Word by word: the keys that time the units of the current line. Belongs to the tag input view, on its window's
    thread. */
class TWordKeys {
public:
  struct TParts {
    TTagRows* rows;
    TCurrentWords* words;
    TStampHabit* habit;
    TNudgeReplay* replay;
    Sonivo_FrontEnd* frontEnd;
    const TViewChoices* choices;
  };
  /** Nothing is owned. */
  explicit TWordKeys(const TParts& parts) : fParts(parts) {}

  /** A command that works only word by word; says so otherwise. Returns false for other commands. */
  bool Run(TCommandId id);
  /** Times the next word by a key that was pressed; nothing for a command without a key. Blocks for 20 ms, so that
      the player can answer. */
  void Tap(const std::optional<TKeyEvent>& pressed);
  void TakeBack();
  /** Ends the line if the key that has stamped its last word was held long enough. */
  void Released(const TKeyEvent& released);
  void MoveCaret(bool right);
  void SelectionChanged();
  /** The rows are other ones now, or another window gets the release of a held key. */
  void Forget() { fHeldKey.reset(); }

private:
  /** The key that has stamped the last word of a line and may still be held. */
  struct THeldKey {
    int32 row;
    std::string line;
    TKeyEvent pressed;
  };
  void ChangeCuts(bool joins);
  void ClearWords();
  void UnstampFromHere();
  void CopyWordTimes();
  void Report(int32 row, size_t unit, const char* key) const;

  const TParts fParts;
  int32 fTappedRow = -1; // by the last tap, unless another row was selected since
  std::optional<THeldKey> fHeldKey;
};
