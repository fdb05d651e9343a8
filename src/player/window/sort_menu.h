#pragma once

#include "platform/app/messenger.h"

class QMenu;
class QWidget;

/** Sorts the playlist. Display thread. */
QMenu* new_sort_menu(QWidget* parent, const BMessenger& player);
