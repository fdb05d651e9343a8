#pragma once

#include <string>
#include <string_view>

/** Backups of data that might be lost. Every function uses an unused name; no function removes a backup.
    Thread-safe. */

/** Copies a file that is about to be written in place to "NAME.before-save" ("NAME.before-save.2" …) or, if no file can
    be created in its folder, to a recovery file of that path. Returns the copy's path; empty on failure. */
[[nodiscard]] std::string make_safety_copy(const std::string& path);
/** Writes the copy's bytes back into the file. */
[[nodiscard]] bool restore_safety_copy(const std::string& copy, const std::string& path);
/** The longest safety copy of the file that belongs to this user and is longer than the file, left by an interrupted
    save in place, next to the file or in the settings folder. Empty if there is none. */
[[nodiscard]] std::string longer_safety_copy(const std::string& path);

/** Writes bytes that could not be saved to `path` to a recovery file in the settings folder, otherwise in the temporary
    folder. Returns its path; empty on failure. */
[[nodiscard]] std::string keep_for_recovery(const std::string& path, std::string_view bytes);
/** Copies the file to a recovery file. */
[[nodiscard]] std::string keep_file_for_recovery(const std::string& path);
