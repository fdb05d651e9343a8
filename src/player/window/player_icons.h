#pragma once

#include <QIcon>
#include <QString>

/** The player's own signs ("play", "pause", "next", "previous", "volume", "menu", "note"), drawn in the colour that
   texts have at that moment, so that they read on light and dark and are sharp at every size. */
QIcon player_icon(const QString& name);
