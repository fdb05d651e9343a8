#pragma once

#include "player/bus/own_status.h"

#include <QVariantMap>

/** The properties of the interface org.mpris.MediaPlayer2. */
QVariantMap root_properties();

/** Those of org.mpris.MediaPlayer2.Player, all but Position, whose changes are not told. */
QVariantMap player_properties(const TOwnStatus& status);

/** The song's object path on the bus. */
QString track_path(int64 track);
