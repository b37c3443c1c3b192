// SPDX-License-Identifier: MIT
#pragma once

#include "preferences/Updater.h"

#include <QMessageBox>
#include <QString>

#include <functional>
#include <memory>

class QDBusConnection;

namespace tunedeck {

/// The updater, which is in a module of its own: it is loaded when it is first asked for. One that is missing, or of
/// another version than the program, is told in a message box.
class SoftwareUpdater : public Updater {
    Q_OBJECT

public:
    /// `bus` always tells of the bus that is, and must outlive this object.
    explicit SoftwareUpdater(const QDBusConnection &bus, QObject *parent = nullptr);
    /// With the module's path.
    SoftwareUpdater(const QDBusConnection &bus, const QString &modulePath, QObject *parent = nullptr);
    explicit SoftwareUpdater(QDBusConnection &&bus, QObject *parent = nullptr) = delete;
    SoftwareUpdater(QDBusConnection &&bus, const QString &modulePath, QObject *parent = nullptr) = delete;

    void checkForUpdates() override;

private:
    [[nodiscard]] std::function<void()> loadModule() const;
    void reportMissingModule();

    const QDBusConnection &m_bus;
    const QString m_modulePath;
    std::function<void()> m_check;
    std::unique_ptr<QMessageBox> m_message;
};

} // namespace tunedeck
