#include "platform/interface/list_item.h"

#include "platform/interface/font.h"

#include <cmath>

void BListItem::Update(BView*, const BFont* font) {
  font_height height;
  font->GetHeight(&height);
  fHeight = std::ceil(height.ascent + height.descent + height.leading);
}
