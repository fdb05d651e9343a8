#pragma once

#include <string>

/** True for file names with the extension of a format that can hold lyrics. */
bool has_song_name(const std::string& path);
