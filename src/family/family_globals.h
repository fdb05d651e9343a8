#pragma once

#include <string>

/** The process-wide objects that each plug-in of the family has for itself, in its own image. Made and deleted on the
    player's thread, while no other thread of the plug-in lives. */

/** gAppPrivacy: before everything else. */
void make_app_privacy();
/** gIAP with its items, and gPref, all with their defaults. */
void make_settings();
/** gLLT, in the language that the settings choose. With $VESMO_SHOW_DB_INFO set, each text that is asked for and
   missing is also shown in an alert. */
void make_texts(const std::string& pluginPath);
/** All but gAppPrivacy, which belongs to the image and ends with it. */
void delete_settings_and_texts();
