#pragma once

#include "platform/interface/view_peer.h"

namespace display {

/** A widget that shows the image, as large as it is; empty where there is none. */
std::shared_ptr<ViewPeer> make_image_peer(const BMessenger& view, std::shared_ptr<const std::string> image);

} // namespace display
