#pragma once

#include "platform/interface/picture.h"
#include "platform/interface/view.h"

#include <optional>
#include <vector>

namespace display {
class PixelPeer;
}

/** Pixels from the left top, row by row, each 0xAARRGGBB. */
struct pixel_image {
  int32 width = 0;
  int32 height = 0;
  std::vector<uint32> pixels; // width * height
};

/** Shows an image made of pixels, stretched to the view, a picture over it and a vertical line over both, which moves
    without redrawing the rest. Gets keys, those with Ctrl included, and the mouse. */
class BPixelView : public BView {
public:
  BPixelView(BRect frame, const char* name, uint32 resizingMode = B_FOLLOW_LEFT_TOP);

  /** Ignored unless it has as many pixels as its size says. */
  void SetPixels(pixel_image image);
  void SetOverlay(BPicture overlay);
  /** Nothing: no line. */
  void SetLine(std::optional<float> x, rgb_color color);
  /** Where the pointer shows that something can be dragged sideways. */
  void SetHandles(std::vector<float> xs);
  /** Pixels of the screen for one of the view's; 1 until the view has been shown. */
  float Scale() const { return fScale; }

  void MessageReceived(BMessage* message) override;

protected:
  /** Hooks, on the window's thread; modifiers as in kernel/modifiers.h. */
  virtual void MouseDown(BPoint, uint32) {}
  /** The second press of a double click, instead of MouseDown. */
  virtual void MouseDoubled(BPoint where, uint32 modifiers) { MouseDown(where, modifiers); }
  /** While the button is down, also outside of the view. */
  virtual void MouseDragged(BPoint, uint32) {}
  virtual void MouseUp(BPoint, uint32) {}
  /** Steps upwards, of which a touch pad makes small parts. */
  virtual void WheelTurned(BPoint, float, uint32) {}
  virtual void ScaleChanged() {}

  std::shared_ptr<display::ViewPeer> MakePeer() override;

private:
  display::PixelPeer* Pixels() const;
  void MouseUsed(const BMessage& event);

  float fScale = 1;
};
