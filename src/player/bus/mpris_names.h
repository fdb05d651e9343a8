#pragma once

#include <QString>

/** Names of the MPRIS specification for media players on the message bus. */
namespace mpris {
inline const QString kServicePrefix = QStringLiteral("org.mpris.MediaPlayer2.");
inline const QString kPath = QStringLiteral("/org/mpris/MediaPlayer2");
inline const QString kRoot = QStringLiteral("org.mpris.MediaPlayer2");
inline const QString kPlayer = QStringLiteral("org.mpris.MediaPlayer2.Player");
inline const QString kProperties = QStringLiteral("org.freedesktop.DBus.Properties");
inline const QString kNoTrack = QStringLiteral("/org/mpris/MediaPlayer2/TrackList/NoTrack");
} // namespace mpris
