// SPDX-License-Identifier: MIT
#pragma once

#include <QDBusArgument>
#include <QDBusObjectPath>
#include <QString>

namespace tunedeck::demo {

/// (oss): a playlist as MPRIS sends it.
struct PlaylistEntry {
    QDBusObjectPath id{QStringLiteral("/")};
    QString name;
    QString icon;

    friend bool operator==(const PlaylistEntry &, const PlaylistEntry &) = default;
};

/// (b(oss)): an optional playlist.
struct ActivePlaylist {
    bool isValid = false;
    PlaylistEntry entry;

    friend bool operator==(const ActivePlaylist &, const ActivePlaylist &) = default;
};

QDBusArgument &operator<<(QDBusArgument &argument, const PlaylistEntry &entry);
const QDBusArgument &operator>>(const QDBusArgument &argument, PlaylistEntry &entry);
QDBusArgument &operator<<(QDBusArgument &argument, const ActivePlaylist &active);
const QDBusArgument &operator>>(const QDBusArgument &argument, ActivePlaylist &active);

/// Call this before the first of them is sent.
void registerBusTypes();

} // namespace tunedeck::demo

Q_DECLARE_METATYPE(tunedeck::demo::PlaylistEntry)
Q_DECLARE_METATYPE(tunedeck::demo::ActivePlaylist)
