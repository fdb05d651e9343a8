#pragma once

#include <string>

/** The process-wide objects that each plug-in of the family has for itself, in its own image. Made and deleted on the
    player's thread, while no other thread of the plug-in lives. */

/** gAppPrivacy, gIAP with its items, and gPref, all with their defaults. */
void make_settings();
/** gLLT, in the language that the settings choose. */
void make_texts(const std::string& pluginPath);
/** All but gAppPrivacy, which belongs to the image and ends with it. */
void delete_settings_and_texts();
