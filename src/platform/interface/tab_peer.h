#pragma once

#include "platform/interface/view_peer.h"

namespace display {

/** Thread-safe handle to a tab widget. */
class TabPeer : public ViewPeer {
public:
  explicit TabPeer(const BMessenger& view);

  /** The page's widget moves into the tab widget. */
  void AddPage(const ViewPeer& page, const std::string& label, bool isScrolled);
  /** Width and height below which a scrolled page is scrolled. */
  void SetNeeded(int32 index, BPoint size);
  void SetLabel(int32 index, const std::string& label);
};

struct PageRoom {
  BPoint aroundPages; // width and height that tabs and borders take
  float scrollBarWidth = 0;
};
/** Blocks on the display thread. */
PageRoom room_around_pages();

} // namespace display
