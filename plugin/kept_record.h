#pragma once

#include "common/archivable.h"

/** A record in a file of the settings folder. While Shift, Command, Control and Option are all down, which is the
   user's way to start with the defaults and to leave what is stored as it was, nothing is done: false. */
bool load_record(koreva::TArchivable* record, const char* folder, const char* name);
bool save_record(koreva::TArchivable* record, const char* folder, const char* name);
/** gPref from the file that the family shares. */
bool load_shared_prefs();
