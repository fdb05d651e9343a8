#pragma once

#include <map>
#include <string>

/** Choosing and loading the language. Called on the thread that made the plug-in at start, later on the manager's. */

/** How the failure to load is shown: text, caption and the one button, as they stand. Set by those who have windows;
    without it the failure goes to standard error. */
void set_language_alert(void (*show)(const char* text, const char* caption, const char* button));

/** Fills `gLLT` anew: from the built-in texts when the setting "LLTF" is empty, else from the file of that name in the
    folder "Language" beside `pluginPath`, to which the setting is rewritten. Tries for 200 ms, since the file may be
    half written, and tells the user when that fails, once for all plug-ins of the process; the table is empty then.
    Always true. */
bool load_language(const char* pluginPath);

/** The folder "Language" beside the plug-in. */
std::string language_folder(const std::string& pluginPath);

/** Adds display name -> path for every language file of the folder, in byte order of their names. */
void get_lang_files(const char* folder, std::map<std::string, std::string>* files);
