#pragma once

#include "platform/interface/view_peer.h"

namespace display {

/** The program's hand on a push button. */
class ButtonPeer : public ViewPeer {
public:
  explicit ButtonPeer(const BMessenger& view);

  void SetLabel(const std::string& label);
  /** Drawn as the one that Return means. */
  void SetDefault(bool isDefault);
};

} // namespace display
