#pragma once

#include "platform/app/message.h"

#include <vector>

struct TPrefValues;

/** Notices of changed settings, one per group, with those of its fields that have changed. Sent to the companion's
    manager, which forwards them to the editor's. */
std::vector<BMessage> notices_of_change(const TPrefValues& from, const TPrefValues& to);
