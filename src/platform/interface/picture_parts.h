#pragma once

#include "platform/interface/picture.h"

/** True if the string is the next part of the one drawn before it: the parts of a text in several colours are on one
    line and end at the same limit. */
inline bool continues_text(const picture_op& part, const picture_op* last) {
  constexpr float kRounding = 0.01F;
  if (!last || part.maxWidth <= 0 || last->maxWidth <= 0 || part.rect.top != last->rect.top) return false;
  const float difference = part.rect.left + part.maxWidth - last->rect.left - last->maxWidth;
  return difference < kRounding && difference > -kRounding;
}
