#pragma once

#include "common/archivable.h"

/** Shift, Command, Control and Option are all down: the user's way to start with the defaults, and to leave what is
    stored as it was. */
bool are_settings_held_off();
/** A record in a file of the settings folder. Whoever loads looks at the keys once, before the first record; saving
   does nothing while they are down: false. */
bool load_record(koreva::TArchivable* record, const char* folder, const char* name);
bool save_record(koreva::TArchivable* record, const char* folder, const char* name);
/** gPref from the file that the family shares. */
bool load_shared_prefs();
