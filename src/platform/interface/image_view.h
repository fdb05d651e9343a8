#pragma once

#include "platform/interface/bitmap.h"
#include "platform/interface/view.h"

/** An image scaled to the view's frame. Hidden from screen readers. */
class BImageView : public BView {
public:
  BImageView(BRect frame, const char* name, BBitmap image);

protected:
  std::shared_ptr<display::ViewPeer> MakePeer() override;

private:
  const BBitmap fImage;
};
