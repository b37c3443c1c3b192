// SPDX-License-Identifier: MIT
#pragma once

#include <QString>

/// The D-Bus names of the MPRIS2 interface, version 2.2.
namespace tunedeck::mpris {

inline const QString namePrefix = QStringLiteral("org.mpris.MediaPlayer2.");
inline const QString objectPath = QStringLiteral("/org/mpris/MediaPlayer2");
inline const QString rootInterface = QStringLiteral("org.mpris.MediaPlayer2");
inline const QString playerInterface = QStringLiteral("org.mpris.MediaPlayer2.Player");
inline const QString playlistsInterface = QStringLiteral("org.mpris.MediaPlayer2.Playlists");
inline const QString propertiesInterface = QStringLiteral("org.freedesktop.DBus.Properties");

inline const QString busService = QStringLiteral("org.freedesktop.DBus");
inline const QString busPath = QStringLiteral("/org/freedesktop/DBus");

} // namespace tunedeck::mpris
