#pragma once

#include "common/archivable.h"

/** True while Shift, Command, Control and Option are all down, which is the user's way to start with the defaults and
    to leave what is stored as it was. */
bool settings_held_off();
/** A record in a file of the settings folder. Nothing is done while the settings are held off: false. */
bool load_record(koreva::TArchivable* record, const char* folder, const char* name);
bool save_record(koreva::TArchivable* record, const char* folder, const char* name);
/** gPref from the file that the family shares. */
bool load_shared_prefs();
