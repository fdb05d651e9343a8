#pragma once

#include "platform/app/messenger.h"
#include "player/model/playlist.h"

class QMenu;

/** Adds what can be done with any song, in the list or playing, to a context menu: its lyrics, its folder, its title as
    text. Display thread. */
void add_song_actions(QMenu* menu, const BMessenger& player, const TSong& song);
