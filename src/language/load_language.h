#pragma once

#include <map>
#include <string>

/** Choosing and loading the language. Called on the thread that constructs the plug-in, later on the manager's. */

/** The callback that shows a loading error, with the literal text, caption and button. Set by programs with windows;
    without it the error goes to standard error. */
void set_language_alert(void (*show)(const char* text, const char* caption, const char* button));

/** Reloads `gLLT`: from the built-in texts if the setting "LLTF" is empty, otherwise from the file of that name in the
    folder "Language" next to `pluginPath`, to which the setting is changed. Retries for 200 ms, since the file may be
    half written. On failure the table is empty, and the error is reported once for all plug-ins of the process. Always
    true. */
bool load_language(const char* pluginPath);

/** The folder "Language" next to the plug-in. */
std::string language_folder(const std::string& pluginPath);

/** Adds display name -> path for every language file of the folder, in byte order of their names. */
void get_lang_files(const char* folder, std::map<std::string, std::string>* files);
