#pragma once

#include "platform/support/types.h"

/** The status code that stands for an errno value. */
status_t status_of_errno(int error);

/** Describes an error of a file in English, for the log. */
const char* status_text(status_t status);
