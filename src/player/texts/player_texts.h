#pragma once

#include <initializer_list>
#include <string>

/** The player's texts in the language of the plug-ins. Thread-safe. Until a file is loaded, and for keys that the file
    lacks, they are the built-in English ones. */

/** UTF-8; valid until the program ends. */
const char* player_text(const char* key);
/** The text with "%1", "%2" … replaced by `parts`. */
std::string player_text(const char* key, std::initializer_list<std::string> parts);
/** Replaces all texts; an empty path means the built-in ones. True if any text has changed. A file that cannot be read
    is the plug-ins' to report. */
bool load_player_texts(const std::string& path);
