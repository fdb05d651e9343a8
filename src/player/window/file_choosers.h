#pragma once

#include "platform/app/messenger.h"

class QWidget;

/** Let the user choose files, a folder, or where to write the list, in a window of their own beside which everything
    goes on; the choice is sent to the player. */
void choose_songs(QWidget* parent, const BMessenger& player);
void choose_folder(QWidget* parent, const BMessenger& player);
void choose_list_file(QWidget* parent, const BMessenger& player);
