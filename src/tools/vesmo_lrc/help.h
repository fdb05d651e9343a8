#pragma once

/** Output of --help and --version. */
extern const char* const kHelpText;
extern const char* const kVersionText;
