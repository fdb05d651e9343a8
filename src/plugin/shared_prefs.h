#pragma once

#include <vector>

class BMessage;
struct TPrefValues;

/** Merges the changed settings, as the notices of the change have them (kMsgOptions for the options), into
   "VesmoShared_Prefs.arc" and "Vesmo_Options.arc", each replaced atomically. Unknown fields, and what another program
   has changed meanwhile, are kept. An unreadable file is backed up next to it and replaced by the `current` settings.
   False when nothing could be written. */
bool store_shared_prefs(const std::vector<BMessage>& changes, const TPrefValues& current);
