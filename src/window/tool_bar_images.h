#pragma once

#include "platform/interface/bitmap.h"

/** The image of the tool bar's button of that name, or the program's icon; they are compiled into the program. Empty
   for a name that is none of theirs. */
BBitmap GetBitmap(const char* name);

inline constexpr const char* kAppIcon = "vesmo-editor";
