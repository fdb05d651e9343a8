#pragma once

#include "platform/interface/view_peer.h"

#include <utility>
#include <vector>

namespace display {

/** The rows of a list as the display needs them: how many, and how high. */
struct RowLayout {
  int32 count = 0;
  /** One height for all, or one for each row. */
  std::vector<float> heights;
  int32 selected = -1;
};

/** The program's hand on a list. */
class ListPeer : public ViewPeer {
public:
  explicit ListPeer(const BMessenger& view);

  /** A new set of rows. Rows before `firstChanged` keep their pictures, the others show them until new ones come. */
  void SetRows(RowLayout layout, int32 firstChanged);
  void SetPictures(std::vector<std::pair<int32, BPicture>> pictures);
  /** -1 for none. */
  void Select(int32 row);
  void ScrollTo(int32 row);
  /** The pictures of these rows are out of date. */
  void Invalidate(int32 first, int32 last);
  void SetFont(const BFont&) override {} // pictures bring their own
};

} // namespace display
