#pragma once

#include "platform/interface/bitmap.h"
#include "platform/interface/control_peer.h"

namespace display {

/** The program's hand on a button that shows an image. */
class ToolButtonPeer : public ControlPeer {
public:
  ToolButtonPeer(const BMessenger& view, const BBitmap& image);

  /** Flat: a frame only under the mouse, with the focus, or while pressed. */
  void SetFlat(bool flat);
};

/** The line between two groups of buttons. */
std::shared_ptr<ViewPeer> make_separator_peer(const BMessenger& view);

/** What a tool button wants, and how wide a separator is. Waits for the display to start. */
struct ToolMetrics {
  BPoint button;
  float separator = 0;
};
ToolMetrics tool_metrics();
/** As the display starts, on its thread. */
void learn_tool_metrics();

} // namespace display
