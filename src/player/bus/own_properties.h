#pragma once

#include "player/bus/own_status.h"

#include <QVariantMap>

/** The properties of the interface org.mpris.MediaPlayer2. */
QVariantMap root_properties();

/** The properties of org.mpris.MediaPlayer2.Player except Position, which has no change signal. */
QVariantMap player_properties(const TOwnStatus& status);

/** The song's object path, its "mpris:trackid". */
QString track_path(int64 track);
