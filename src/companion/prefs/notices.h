#pragma once

#include "platform/app/message.h"

#include <vector>

struct TPrefValues;

/** One notice for each group of settings that has changed, with the changed fields of the group. */
std::vector<BMessage> notices_of_change(const TPrefValues& from, const TPrefValues& to);
