#pragma once

#include "platform/interface/view_peer.h"

namespace display {

/** The program's hand on a row of tabs with a page each. */
class TabPeer : public ViewPeer {
public:
  explicit TabPeer(const BMessenger& view);

  /** Takes the page's control in; it fills the room below the tabs from now on. */
  void AddPage(const ViewPeer& page, const std::string& label);
  void SetLabel(int32 index, const std::string& label);
};

/** What tabs and borders take from the pages. Waits for the display. */
BPoint room_around_pages();

} // namespace display
