#include "platform/interface/bitmap.h"

#include "platform/interface/image_size.h"

BBitmap::BBitmap(const void* bytes, size_t size)
    : fBytes(std::make_shared<const std::string>(static_cast<const char*>(bytes), size)) {}

bool BBitmap::IsValid() const {
  return Bounds().Width() >= 0;
}

BRect BBitmap::Bounds() const {
  const BPoint size = fBytes ? display::image_size(fBytes) : BPoint{-1, -1};
  return {0, 0, size.x, size.y};
}
