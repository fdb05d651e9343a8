#include "editviews/following.h"

namespace {
/** So long the user who has pressed a key is left alone. */
constexpr bigtime_t kIdleUs = 4000000;
} // namespace

void TFollowing::Toggle() {
  fChoices->follows = !fChoices->follows;
  fShownRow = -1;
  fChoices->Store();
}

std::optional<int32> TFollowing::RowToShow(int32 sungRow, bigtime_t nowUs) {
  if (!IsOn() || sungRow < 0 || sungRow == fShownRow || nowUs - fLastKeyUs < kIdleUs) return {};
  fShownRow = sungRow;
  return sungRow;
}
