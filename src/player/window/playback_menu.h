#pragma once

#include "platform/app/messenger.h"
#include "player/model/player_choices.h"

#include <functional>

class QMenu;
class QWidget;

/** The menu of playing order and sound. Shows `choices` whenever it opens; they must outlive it. Display thread. */
QMenu* new_playback_menu(QWidget* parent, const BMessenger& player, const TPlayerChoices* choices,
                         const std::function<void()>& openSound);
