#pragma once

#include "platform/support/geometry.h"

#include <memory>
#include <string>

namespace display {

/** Width and height of an encoded image as a BRect of that size tells them; -1, -1 when it cannot be read.
    Waits for the display. */
BPoint image_size(const std::shared_ptr<const std::string>& bytes);

} // namespace display
