#pragma once

#include "player/bus/own_status.h"

#include <QVariantMap>

#include <optional>

/** The properties of the interface org.mpris.MediaPlayer2. */
QVariantMap root_properties();

/** The properties of org.mpris.MediaPlayer2.Player except Position, which has no change signal. */
QVariantMap player_properties(const TOwnStatus& status);

/** The value of the property LoopStatus; empty for any other value. */
std::optional<TRepeat> repeat_of(const QVariant& loopStatus);

/** The song's object path, its "mpris:trackid". */
QString track_path(int64 track);
