#pragma once

#include "platform/interface/view_peer.h"

namespace display {

/** The program's hand on a button that shows a colour and opens the dialog of colours. */
class ColorPeer : public ViewPeer {
public:
  explicit ColorPeer(const BMessenger& view);

  void SetShown(rgb_color color);
  /** Of the dialog. */
  void SetTitle(const std::string& title);
};

} // namespace display
