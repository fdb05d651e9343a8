#pragma once

#include <functional>
#include <string>
#include <string_view>

/** Files under unused names, readable by this user only. They are created with O_EXCL and without following symbolic
    links, so that no existing file or link at a predictable name is ever written to. Thread-safe. */

/** Maximum number of names tried. */
inline constexpr int kMostUniqueNames = 100;

/** The name for the `number`th attempt, counted from 1. */
using TNameOf = std::function<std::string(int number)>;

/** `path`, "path.2", "path.3" … */
TNameOf numbered_names(const std::string& path);

/** Write a new file and flush it and its folder. Return its path; on failure an empty one, and no file is left. */
[[nodiscard]] std::string write_unique_file(const TNameOf& nameOf, std::string_view bytes);
/** `from` must be a regular file, not a link. */
[[nodiscard]] std::string copy_to_unique_file(const std::string& from, const TNameOf& nameOf);

/** Renames a file to the first unused name. */
[[nodiscard]] bool rename_to_unique(const std::string& from, const TNameOf& nameOf);

/** Flushes the folder, so that created, renamed and removed names survive a power cut. */
void flush_folder_of(const std::string& path);
