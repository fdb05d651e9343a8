#pragma once

#include "player/model/playlist.h"

#include <QString>

/** How many songs there are and how long they take together, as far as known; empty for no songs. */
QString list_total(const TSongs& songs);
