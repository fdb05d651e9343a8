#pragma once

#include "platform/app/messenger.h"

#include <string>

/** Opens the file's folder in the program that the desktop has for folders. Without one, `player` is sent
    kMsgFolderClosed. Returns at once. */
void open_folder_of(const std::string& path, const BMessenger& player);
