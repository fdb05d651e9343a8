#pragma once

#include "platform/interface/view_peer.h"

namespace display {

/** Thread-safe handle to a tab widget. */
class TabPeer : public ViewPeer {
public:
  explicit TabPeer(const BMessenger& view);

  /** The page's widget moves into the tab widget, which lays it out from then on. */
  void AddPage(const ViewPeer& page, const std::string& label);
  void SetLabel(int32 index, const std::string& label);
};

/** Width and height that tabs and borders take. Blocks on the display thread. */
BPoint room_around_pages();

} // namespace display
