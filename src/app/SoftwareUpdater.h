// SPDX-License-Identifier: MIT
#pragma once

#include "preferences/Updater.h"

#include <QMessageBox>
#include <QString>

#include <functional>
#include <memory>

class QDBusConnection;

namespace tunedeck {

class UserDefaults;

/// Loads the updater's module on the first check for updates. Shows a message box if the module is missing or belongs
/// to another version of the program.
class SoftwareUpdater : public Updater {
    Q_OBJECT

public:
    /// `bus` always refers to the current bus. It and `settings` must outlive this object.
    SoftwareUpdater(const QDBusConnection &bus, UserDefaults &settings, QObject *parent = nullptr);
    /// Loads the module at `modulePath`.
    SoftwareUpdater(
        const QDBusConnection &bus, UserDefaults &settings, const QString &modulePath, QObject *parent = nullptr);
    SoftwareUpdater(QDBusConnection &&bus, UserDefaults &settings, QObject *parent = nullptr) = delete;
    SoftwareUpdater(
        QDBusConnection &&bus, UserDefaults &settings, const QString &modulePath, QObject *parent = nullptr) = delete;

    [[nodiscard]] bool looksForUpdates() const override;
    void checkForUpdates() override;

private:
    [[nodiscard]] std::function<void()> loadModule() const;
    void reportMissingModule();

    const QDBusConnection &m_bus;
    UserDefaults &m_settings;
    const QString m_modulePath;
    std::function<void()> m_check;
    std::unique_ptr<QMessageBox> m_message;
};

} // namespace tunedeck
