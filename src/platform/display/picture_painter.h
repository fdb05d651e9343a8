#pragma once

#include "platform/interface/picture.h"

class QPainter;

namespace display {

/** Paints a recorded picture at the painter's origin. */
void paint_picture(QPainter& painter, const BPicture& picture);

} // namespace display
