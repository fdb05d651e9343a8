#pragma once

#include <string>
#include <string_view>

/** Copies that hold what might otherwise be lost. Every function creates its copy under a name of its own, and nothing
    here removes a copy. Any thread. */

/** Copies a file that is about to be written in place: to "NAME.before-save" ("NAME.before-save.2" …) beside it or,
    where its folder takes no new file, to a recovery file. Returns the copy's path; empty on failure. */
[[nodiscard]] std::string make_safety_copy(const std::string& path);
/** Writes the copy's bytes back into the file. */
[[nodiscard]] bool restore_safety_copy(const std::string& copy, const std::string& path);
/** The longest safety copy beside the file that is this user's own and longer than the file is: a save was interrupted
    while the file was being written in place. Empty when there is none. */
[[nodiscard]] std::string longer_safety_copy(const std::string& path);

/** Keeps bytes that could not be written to `path` in a recovery file below the settings folder, else below the
    temporary folder. Returns its path; empty on failure. */
[[nodiscard]] std::string keep_for_recovery(const std::string& path, std::string_view bytes);
/** The same for the bytes of the file. */
[[nodiscard]] std::string keep_file_for_recovery(const std::string& path);
