// SPDX-License-Identifier: MIT
#pragma once

#include <QDBusConnection>
#include <QObject>
#include <QVariantMap>

#include <functional>

namespace tunedeck {

/// Makes the program run once per session: the first process owns the program's name on the session bus, any other
/// only asks the first one to show itself. Without a bus every process is the first.
class ApplicationInstance : public QObject {
    Q_OBJECT
    Q_CLASSINFO("D-Bus Interface", "org.freedesktop.Application")

public:
    explicit ApplicationInstance(const QDBusConnection &bus, QObject *parent = nullptr);

    [[nodiscard]] bool isFirst() const;
    /// Asks the first process to show itself and calls `done` with whether it answered, within a second.
    void activateFirst(std::function<void(bool answered)> done);

public Q_SLOTS:
    /// What the desktop, or another process of the program, calls.
    Q_SCRIPTABLE void Activate(const QVariantMap &platformData);

Q_SIGNALS:
    void activated();

private:
    QDBusConnection m_bus;
    bool m_isFirst;
};

} // namespace tunedeck
