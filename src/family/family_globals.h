#pragma once

#include <string>

/** The global objects, of which each plug-in image has its own. Created and deleted on the player's thread while no
    other thread of the plug-in is running. */

/** gAppPrivacy; the first to be created. */
void make_app_privacy();
/** gIAP with its items, gPref and gKeyBindings, with default values. */
void make_settings();
/** gLLT, in the language of the settings. With $VESMO_SHOW_DB_INFO set, missing texts are also shown in an alert. */
void make_texts(const std::string& pluginPath);
/** All but gAppPrivacy, which is static. */
void delete_settings_and_texts();
