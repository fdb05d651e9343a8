#pragma once

#include <QIcon>
#include <QString>

/** The player's own signs ("play", "pause", "next", "previous", "volume"), drawn in the colour of texts, so that they
    read on light and dark and are sharp at every size. */
QIcon player_icon(const QString& name, const QColor& color);
