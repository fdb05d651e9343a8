#pragma once

#include "lyrics/lyrics_form.h"

#include <string>

/** As in the status bar. */
std::string encoding_name(TEncoding encoding);
