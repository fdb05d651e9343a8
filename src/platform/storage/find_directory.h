#pragma once

#include "platform/storage/path.h"

enum directory_which { B_USER_DIRECTORY, B_USER_SETTINGS_DIRECTORY };

/** Home, or the settings folder: $XDG_CONFIG_HOME when that is an absolute path, else ~/.config. Not created. */
status_t find_directory(directory_which which, BPath* path);
