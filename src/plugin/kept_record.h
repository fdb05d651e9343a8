#pragma once

#include "common/archivable.h"

/** True while Shift, Command, Control and Option are all held down, with which the user starts with the defaults and
    leaves the stored settings unchanged. */
bool are_settings_held_off();
/** Load and save a record in a file of the settings folder. The caller of `load_record` checks `are_settings_held_off`
    once, before the first record; `save_record` checks it itself and returns false. */
bool load_record(koreva::TArchivable* record, const char* folder, const char* name);
bool save_record(koreva::TArchivable* record, const char* folder, const char* name);
/** Loads gPref from the family's shared file. */
bool load_shared_prefs();
/** Loads the options of gPref from their own file. */
bool load_options();
