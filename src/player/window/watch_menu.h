#pragma once

#include "platform/app/messenger.h"

#include <functional>

class QMenu;
struct TPlayerState;

/** The folders that are watched for new songs: adds and removes one. `state` outlives the menu. Display thread. */
QMenu* new_watch_menu(QMenu* parent, const BMessenger& player, const TPlayerState* state,
                      const std::function<void()>& chooseFolder);
