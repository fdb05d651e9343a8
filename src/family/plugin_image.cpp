#include "family/plugin_image.h"

#include "platform/kernel/images.h"

std::string image_path_with(const char* text) {
  int32 cookie = 0;
  image_info image;
  while (get_next_image_info(&cookie, &image) == B_OK) {
    if (image.name.find(text) != std::string::npos) return image.name;
  }
  return {};
}
