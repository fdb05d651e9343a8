#pragma once

#include <string>
#include <string_view>
#include <vector>

/** Folders that are watched for new songs: absolute paths, none below another one. */
using TWatchedFolders = std::vector<std::string>;

inline constexpr size_t kMostWatchedFolders = 16;

bool is_below(std::string_view path, std::string_view folder);

/** With that folder, which replaces those below it. Unchanged if the path is not absolute or too long, if the folder is
    watched already, itself or as part of another one, or if there are too many. */
TWatchedFolders with_folder(TWatchedFolders folders, std::string folder);
