#pragma once

#include <cstddef>
#include <memory>
#include <string>

/** An image in its encoded form: a drawing (platform/display/drawing.h), which is sharp at every size and can take the
    colour of the texts around it, or PNG and whatever else the display's image reader supports. Copies share the
    bytes. Any thread. */
class BBitmap {
public:
  BBitmap() = default;
  /** Not inline: the display may hold the bytes for longer than the image of the plug-in that made them is loaded, so
      their deleter must not be part of that image. */
  BBitmap(const void* bytes, size_t size);

  /** Null without an image. */
  const std::shared_ptr<const std::string>& Bytes() const { return fBytes; }

private:
  std::shared_ptr<const std::string> fBytes;
};
