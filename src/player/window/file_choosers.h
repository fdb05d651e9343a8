#pragma once

#include "platform/app/messenger.h"
#include "player/model/watched_folders.h"

class QWidget;

/** Non-blocking file dialogs; the choice is sent to the player. Display thread. */
void choose_songs(QWidget* parent, const BMessenger& player);
void choose_folder(QWidget* parent, const BMessenger& player);
/** Chooses one more watched folder. */
void choose_watched_folder(QWidget* parent, const BMessenger& player, const TWatchedFolders& folders);
void choose_list_file(QWidget* parent, const BMessenger& player);
