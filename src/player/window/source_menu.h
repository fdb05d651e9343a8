#pragma once

#include "platform/app/messenger.h"
#include "player/model/player_state.h"

class QMenu;
class QWidget;

/** The possible sources: this player's own sound, and other players on the desktop's message bus. */
struct TSources {
  std::vector<TSourceName> players;
  std::string chosen;
  bool isBusReachable = false;
};

/** Fills itself from `sources` whenever it opens; `sources` must outlive it. Display thread. */
QMenu* new_source_menu(QWidget* parent, const BMessenger& player, const TSources* sources);
