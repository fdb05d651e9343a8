#pragma once

#include "platform/interface/string_view.h"
#include "platform/interface/view_peer.h"

namespace display {

/** Thread-safe handle to a label widget. */
class StringPeer : public ViewPeer {
public:
  explicit StringPeer(const BMessenger& view);

  void SetText(const std::string& text);
  void SetAlignment(alignment align);
  /** `control` is the name of a control with the same parent. */
  void SetBuddy(const std::string& control);
};

} // namespace display
