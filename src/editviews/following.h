#pragma once

#include "common/archivable.h"
#include "platform/support/types.h"

#include <optional>

/** Decides when the list of lines follows the song: the sung line is kept in sight unless the user has pressed a key
    within the last seconds. The choice is stored in "VesmoE_View.arc". One thread at a time. */
class TFollowing : private koreva::TArchivable {
public:
  /** Loads the user's choice. */
  TFollowing();

  bool IsOn() const { return fIsOn; }
  /** Turns it on or off, and saves that. */
  void Toggle();
  void KeyPressed(bigtime_t nowUs) { fLastKeyUs = nowUs; }
  /** Called at every poll: the sung row when it must be brought into sight now, once for each row. */
  std::optional<int32> RowToShow(int32 sungRow, bigtime_t nowUs);

private:
  bool Archive(BMessage* archive) override;
  bool Unarchive(const BMessage& archive) override;

  bool fIsOn = true; // "Flow"
  int32 fShownRow = -1;
  bigtime_t fLastKeyUs = INT64_MIN / 2;
};
