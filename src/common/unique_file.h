#pragma once

#include <functional>
#include <string>
#include <string_view>

/** Files under names that nothing has yet, readable by this user only. They are created exclusively and never through a
    symbolic link, so that neither a file nor a link of somebody else at a predictable name is ever written to. Any
    thread. */

/** How many names are tried. */
inline constexpr int kMostUniqueNames = 100;

/** The name to try, from 1. */
using TNameOf = std::function<std::string(int number)>;

/** `path`, "path.2", "path.3" … */
TNameOf numbered_names(const std::string& path);

/** Write a new file and flush it with its folder. Return its name; empty, and with nothing left behind, on failure. */
[[nodiscard]] std::string write_unique_file(const TNameOf& nameOf, std::string_view bytes);
/** `from` is a regular file, not a link. */
[[nodiscard]] std::string copy_to_unique_file(const std::string& from, const TNameOf& nameOf);

/** Renames a file to the first name that is free. */
[[nodiscard]] bool rename_to_unique(const std::string& from, const TNameOf& nameOf);

/** So that names created, renamed or removed in it survive a power cut. */
void flush_folder_of(const std::string& path);
