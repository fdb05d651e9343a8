#pragma once

#include "platform/storage/path.h"

enum directory_which { B_USER_DIRECTORY, B_USER_SETTINGS_DIRECTORY };

/** The home folder, or the settings folder: $XDG_CONFIG_HOME if that is an absolute path, else ~/.config. Does not
   create it. */
status_t find_directory(directory_which which, BPath* path);
