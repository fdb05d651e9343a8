#pragma once

#include "platform/interface/string_view.h"
#include "platform/interface/view_peer.h"

namespace display {

/** The program's hand on a line of text. */
class StringPeer : public ViewPeer {
public:
  explicit StringPeer(const BMessenger& view);

  void SetText(const std::string& text);
  void SetAlignment(alignment align);
  /** By its name, among the controls of the same parent. */
  void SetBuddy(const std::string& control);
};

} // namespace display
