// SPDX-License-Identifier: MIT
#pragma once

#include <QDBusConnection>
#include <QProcess>
#include <QString>
#include <QStringList>

namespace tunedeck {

class PrivateBus;

/// The demo player as a process of its own on a private bus, and the line to it.
class DemoPlayerProcess {
public:
    /// Starts the player and waits until it owns its name. `control` is the connection that lines are sent over.
    DemoPlayerProcess(const PrivateBus &bus, const QDBusConnection &control, const QStringList &arguments = {});
    ~DemoPlayerProcess();
    DemoPlayerProcess(const DemoPlayerProcess &) = delete;
    DemoPlayerProcess &operator=(const DemoPlayerProcess &) = delete;

    [[nodiscard]] bool isReady() const;
    /// Has the player do what `line` says; false if it does not understand. Returns when it is done.
    bool tell(const QString &line) const;
    /// The calls that the player received since this was last asked.
    QStringList takeCalls() const;
    /// Those of them that are commands.
    [[nodiscard]] QStringList takeCommands() const;

    void freeze() const;
    void thaw() const;
    void kill() const;

private:
    [[nodiscard]] QDBusMessage control(const QString &method, const QVariantList &arguments) const;

    QDBusConnection m_control;
    QString m_service;
    QProcess m_process;
    bool m_isReady = false;
};

} // namespace tunedeck
