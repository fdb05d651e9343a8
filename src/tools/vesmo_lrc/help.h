#pragma once

/** What --help and --version say. */
extern const char* const kHelpText;
extern const char* const kVersionText;
