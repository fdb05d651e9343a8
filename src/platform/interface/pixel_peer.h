#pragma once

#include "platform/interface/pixel_view.h"
#include "platform/interface/view_peer.h"

namespace display {

/** What the mouse does in a pixel view. */
enum class MouseAction : int32 { kDown, kDragged, kUp, kWheel, kDoubled };

enum : uint32 {
  /** int32 "action", a MouseAction; floats "x", "y"; int32 "modifiers"; float "steps" of the wheel. */
  DISPLAY_MOUSE = '_MSE',
  DISPLAY_SCALE_CHANGED = '_SCL' // float "scale"
};

/** Thread-safe handle to the widget of a pixel view. */
class PixelPeer : public ViewPeer {
public:
  explicit PixelPeer(const BMessenger& view);

  void SetPixels(pixel_image image);
  void SetPicture(BPicture picture) override;
  void SetLine(std::optional<float> x, rgb_color color);
  void SetHandles(std::vector<float> xs);
};

} // namespace display
