#pragma once

#include "platform/support/types.h"

#include <string>
#include <string_view>

/** Makes `path` hold exactly `bytes`: they are written to a new file beside it and flushed, and only then does that
    file take the old one's place, so that a failure leaves the old file whole. Permissions, extended attributes (the
    file type among them) and, where allowed, the owner are kept; a symbolic link stays one and its target is replaced;
    a file with several hard links, or in a folder that takes no other, is written in place, after a copy of it was put
    aside, which comes back when that fails.
    A new file gets the ordinary permissions. Any thread. */
[[nodiscard]] status_t replace_file(const std::string& path, std::string_view bytes);

/** True when the file is there and holds exactly `bytes`. */
[[nodiscard]] bool file_holds(const std::string& path, std::string_view bytes);

/** Keeps bytes that could not be written to `path`: in a file of their own below the settings folder, else below the
    temporary folder. Returns where, or an empty text when nothing worked. */
[[nodiscard]] std::string keep_for_recovery(const std::string& path, std::string_view bytes);
/** The same for what the file holds. */
[[nodiscard]] std::string keep_file_for_recovery(const std::string& path);
