#pragma once

#include <string>

/** The language file with which the player starts: the one chosen in the preferences; before anything was ever stored
    there, that of the desktop's language, if `folder` has one. Empty for the built-in English. */
std::string chosen_language_file(const std::string& folder);

/** The language of messages according to the environment, such as "de"; empty for English and the C locale. */
std::string desktop_language();
