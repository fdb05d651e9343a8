#pragma once

#include "platform/support/types.h"

#include <string>

/** One loaded image: the program itself first, then its libraries and add-ons in load order. */
struct image_info {
  std::string name;
};

/** Iterates over the images of this process; `cookie` starts at 0. B_BAD_INDEX after the last one. */
[[nodiscard]] status_t get_next_image_info(int32* cookie, image_info* info);

/** The image that contains the code at that address stays mapped until the process ends, for threads in it that cannot
    be waited for. */
void keep_image_mapped(const void* address);
