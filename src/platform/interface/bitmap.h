#pragma once

#include "platform/support/geometry.h"

#include <cstddef>
#include <memory>
#include <string>

/** An image in the form it was read in: a drawing (platform/display/drawing.h), which is sharp at every size and can
    take the colour of the texts around it, or PNG and what else the display's image reader knows. Copies share the
    bytes. Any thread. */
class BBitmap {
public:
  BBitmap() = default;
  BBitmap(const void* bytes, size_t size);

  /** The display can read it. Waits for the display, as does the next one. */
  bool IsValid() const;
  /** The size that the image itself names. */
  BRect Bounds() const;
  /** Null without an image. */
  const std::shared_ptr<const std::string>& Bytes() const { return fBytes; }

private:
  std::shared_ptr<const std::string> fBytes;
};
