#include "platform/interface/image_view.h"

#include "platform/interface/image_peer.h"

#include <utility>

BImageView::BImageView(BRect frame, const char* name, BBitmap image) : BView(frame, name), fImage(std::move(image)) {}

std::shared_ptr<display::ViewPeer> BImageView::MakePeer() {
  return display::make_image_peer(BMessenger(this), fImage.Bytes());
}
