#pragma once

#include "platform/storage/path.h"

enum directory_which { B_USER_DIRECTORY, B_USER_SETTINGS_DIRECTORY, B_USER_STATE_DIRECTORY };

/** The home folder, the settings folder ($XDG_CONFIG_HOME if that is an absolute path, else ~/.config) or the folder
   for state that survives restarts ($XDG_STATE_HOME, else ~/.local/state). Does not create it. */
status_t find_directory(directory_which which, BPath* path);
