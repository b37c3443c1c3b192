// SPDX-License-Identifier: MIT
#include "BusTypes.h"

#include <QDBusMetaType>
#include <QList>

namespace tunedeck::demo {

QDBusArgument &operator<<(QDBusArgument &argument, const PlaylistEntry &entry)
{
    argument.beginStructure();
    argument << entry.id << entry.name << entry.icon;
    argument.endStructure();
    return argument;
}

const QDBusArgument &operator>>(const QDBusArgument &argument, PlaylistEntry &entry)
{
    argument.beginStructure();
    argument >> entry.id >> entry.name >> entry.icon;
    argument.endStructure();
    return argument;
}

QDBusArgument &operator<<(QDBusArgument &argument, const ActivePlaylist &active)
{
    argument.beginStructure();
    argument << active.isValid << active.entry;
    argument.endStructure();
    return argument;
}

const QDBusArgument &operator>>(const QDBusArgument &argument, ActivePlaylist &active)
{
    argument.beginStructure();
    argument >> active.isValid >> active.entry;
    argument.endStructure();
    return argument;
}

void registerBusTypes()
{
    qDBusRegisterMetaType<PlaylistEntry>();
    qDBusRegisterMetaType<QList<PlaylistEntry>>();
    qDBusRegisterMetaType<ActivePlaylist>();
}

} // namespace tunedeck::demo
