#pragma once

#include "lyrics/stamp.h"
#include "platform/support/types.h"

#include <string>

/** What the status bar reports after a key of the tag input view, in the user's language. Rows count from 0. */

std::string stamp_report(int32 row, const TStampedLine& stamped);
std::string nudge_report(const TNudgedLine& nudged);
std::string removal_report(int32 row);
/** The user's stamps are late by that, or early when it is negative. */
std::string lateness_report(int32 latenessMs);
