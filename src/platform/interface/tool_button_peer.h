#pragma once

#include "platform/interface/bitmap.h"
#include "platform/interface/control_peer.h"

namespace display {

/** Thread-safe handle to a tool button with an image. */
class ToolButtonPeer : public ControlPeer {
public:
  ToolButtonPeer(const BMessenger& view, const BBitmap& image);

  /** Flat: framed only under the mouse, with the focus, or while pressed. */
  void SetFlat(bool flat);
  /** A dot at the corner of the image. */
  void SetBadge(bool shown);
};

/** The line between two groups of buttons. */
std::shared_ptr<ViewPeer> make_separator_peer(const BMessenger& view);

/** Preferred size of a tool button and width of a separator. */
struct ToolMetrics {
  BPoint button;
  float separator = 0;
};
/** Blocks until the display has started. */
ToolMetrics tool_metrics();
/** Called once as the display starts, on its thread. */
void learn_tool_metrics();

} // namespace display
