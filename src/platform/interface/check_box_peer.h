#pragma once

#include "platform/interface/view_peer.h"

namespace display {

/** The program's hand on a check box. */
class CheckBoxPeer : public ViewPeer {
public:
  explicit CheckBoxPeer(const BMessenger& view);

  void SetLabel(const std::string& label);
  void SetChecked(bool isChecked);
};

} // namespace display
