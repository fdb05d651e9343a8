#pragma once

#include "platform/app/messenger.h"
#include "player/model/player_state.h"

class QMenu;
class QWidget;

/** From where the song can come: this player's own sound, or another player on the desktop's message bus. */
struct TSources {
  std::vector<TSourceName> players;
  std::string chosen;
  bool isBusReachable = false;
};

/** A menu that shows `sources`, which must outlive it, as they are when it opens. Display thread. */
QMenu* new_source_menu(QWidget* parent, const BMessenger& player, const TSources* sources);
