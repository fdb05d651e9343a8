#pragma once

#include "platform/interface/view_peer.h"

#include <string>
#include <vector>

namespace display {

/** The program's hand on a field that unfolds into choices. */
class MenuFieldPeer : public ViewPeer {
public:
  explicit MenuFieldPeer(const BMessenger& view);

  void SetChoices(const std::vector<std::string>& choices);
  /** None for an index outside the choices. */
  void SetChosen(int32 index);
};

} // namespace display
