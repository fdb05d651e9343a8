#pragma once

#include <vector>

class BMessage;
struct TPrefValues;

/** Puts the changed settings into "VesmoShared_Prefs.arc", in one step. What the file holds besides stays: fields that
    this program does not know, and what another has changed meanwhile. A file that cannot be read is kept as a copy
    beside it, and one of all the `current` settings takes its place. False when nothing could be written. */
bool store_shared_prefs(const std::vector<BMessage>& changes, const TPrefValues& current);
