// SPDX-License-Identifier: MIT
#pragma once

#include <QDBusConnection>
#include <QObject>
#include <QStringList>

namespace tunedeck {

/// Stands in for a desktop's file manager, once it is registered on a bus.
class FileManager : public QObject {
    Q_OBJECT
    Q_CLASSINFO("D-Bus Interface", "org.freedesktop.FileManager1")

public:
    bool registerOn(QDBusConnection bus)
    {
        return bus.registerObject(
                   QStringLiteral("/org/freedesktop/FileManager1"), this, QDBusConnection::ExportScriptableSlots)
            && bus.registerService(QStringLiteral("org.freedesktop.FileManager1"));
    }

    /// The addresses of the files that it had to show.
    QStringList shown;

public Q_SLOTS:
    Q_SCRIPTABLE void ShowItems(const QStringList &addresses, const QString &) { shown += addresses; }
};

} // namespace tunedeck
