#pragma once

#include "editviews/view_choices.h"

#include <optional>

/** Decides when the list of lines follows the song: the sung line is kept in sight unless the user has pressed a key
    within the last seconds. One thread at a time. */
class TFollowing {
public:
  /** `choices` is not owned. */
  explicit TFollowing(TViewChoices* choices) : fChoices(choices) {}

  bool IsOn() const { return fChoices->follows; }
  /** Turns it on or off, and saves that. */
  void Toggle();
  void KeyPressed(bigtime_t nowUs) { fLastKeyUs = nowUs; }
  /** Called at every poll: the sung row when it must be brought into sight now, once for each row. */
  std::optional<int32> RowToShow(int32 sungRow, bigtime_t nowUs);

private:
  TViewChoices* const fChoices;
  int32 fShownRow = -1;
  bigtime_t fLastKeyUs = INT64_MIN / 2;
};
