#pragma once

#include "platform/interface/picture.h"

class QPainter;

namespace display {

/** Paints a recorded picture with its left top at the painter's origin. */
void paint_picture(QPainter& painter, const BPicture& picture);

} // namespace display
