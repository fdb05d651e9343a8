#pragma once

#include "platform/interface/view_peer.h"

namespace display {

/** The program's hand on a field of one line. */
class FieldPeer : public ViewPeer {
public:
  explicit FieldPeer(const BMessenger& view);

  void SetText(const std::string& text);
  void SelectAll();
};

} // namespace display
