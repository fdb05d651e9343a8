#pragma once

#include "platform/interface/picture.h"

#include <string>

class QPainter;

namespace display {

/** Paints a recorded picture at the painter's origin. */
void paint_picture(QPainter& painter, const BPicture& picture);

/** The text of the picture that does not fit; empty when all fits. */
std::string elided_text(const BPicture& picture);
/** What the signs of the picture mean. */
std::string meaning_of_signs(const BPicture& picture);

} // namespace display
