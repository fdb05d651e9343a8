#pragma once

#include <string>

/** The language file with which the player starts: the one chosen in the preferences; before anything was ever stored
    there, that of the desktop's language, if `folder` has one. Empty for the built-in English. */
std::string chosen_language_file(const std::string& folder);

/** The file of that name in the folder, as language files are in no other: only the last part of `path` counts, which
    may come from another process. Empty for none. */
std::string named_language_file(const std::string& folder, const std::string& path);

/** The language of messages according to the environment, such as "de"; empty for English and the C locale. */
std::string desktop_language();
