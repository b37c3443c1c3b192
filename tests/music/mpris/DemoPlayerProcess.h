// SPDX-License-Identifier: MIT
#pragma once

#include <QDBusConnection>
#include <QProcess>
#include <QString>
#include <QStringList>

namespace tunedeck {

class PrivateBus;

/// The demo player as a process of its own on a private bus.
class DemoPlayerProcess {
public:
    /// Starts the player and waits until it owns its name. `control` is the connection that lines are sent over.
    DemoPlayerProcess(const PrivateBus &bus, const QDBusConnection &control, const QStringList &arguments = {});
    ~DemoPlayerProcess();
    DemoPlayerProcess(const DemoPlayerProcess &) = delete;
    DemoPlayerProcess &operator=(const DemoPlayerProcess &) = delete;

    [[nodiscard]] bool isReady() const;
    [[nodiscard]] qint64 processId() const { return m_process.processId(); }
    /// Makes the player carry out `line`; false if it does not understand it. Returns when it is done.
    bool tell(const QString &line) const;
    /// The same for the player that the process shows as "org.mpris.MediaPlayer2." with `name` appended.
    bool tell(const QString &name, const QString &line) const;
    /// The calls that the player received since the last takeCalls() or takeCommands().
    QStringList takeCalls() const;
    /// The commands among these calls.
    [[nodiscard]] QStringList takeCommands() const;
    [[nodiscard]] QStringList takeCommands(const QString &name) const;

    void freeze() const;
    void thaw() const;
    void kill() const;

private:
    [[nodiscard]] QStringList takeCallsOf(const QString &service) const;
    [[nodiscard]] QDBusMessage control(
        const QString &service, const QString &method, const QVariantList &arguments) const;

    QDBusConnection m_control;
    QString m_service;
    QProcess m_process;
    bool m_isReady = false;
};

} // namespace tunedeck
