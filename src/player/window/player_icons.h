#pragma once

#include <QIcon>
#include <QString>

/** The player's icons ("play", "pause", "next", "previous", "volume", "menu", "note"), drawn as vectors in the current
    text colour, for light and dark themes. */
QIcon player_icon(const QString& name);
