#pragma once

#include "platform/interface/view_peer.h"

namespace display {

/** A widget that shows the image scaled to its size; empty without an image. */
std::shared_ptr<ViewPeer> make_image_peer(const BMessenger& view, std::shared_ptr<const std::string> image);

} // namespace display
