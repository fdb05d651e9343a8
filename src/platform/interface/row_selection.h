#pragma once

#include "platform/support/types.h"

/** The selected rows of a list: consecutive, the current one among them. All -1 when none is selected. */
struct row_selection {
  int32 current = -1;
  int32 first = -1;
  int32 last = -1;

  int32 Count() const { return current < 0 ? 0 : last - first + 1; }
  bool Has(int32 row) const { return row >= 0 && row >= first && row <= last; }
  /** The end of the selection that stays when the other end is moved. */
  int32 Anchor() const { return current == first ? last : first; }
  bool operator==(const row_selection&) const = default;
};
