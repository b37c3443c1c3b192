// SPDX-License-Identifier: MIT
#pragma once

#include "preferences/Updater.h"

#include <QMessageBox>
#include <QString>

#include <functional>
#include <memory>

class QDBusConnection;

namespace tunedeck {

/// Loads the updater's module on the first check for updates. Shows a message box if the module is missing or belongs
/// to another version of the program.
class SoftwareUpdater : public Updater {
    Q_OBJECT

public:
    /// `bus` always refers to the current bus, and must outlive this object.
    explicit SoftwareUpdater(const QDBusConnection &bus, QObject *parent = nullptr);
    /// Loads the module at `modulePath`.
    SoftwareUpdater(const QDBusConnection &bus, const QString &modulePath, QObject *parent = nullptr);
    explicit SoftwareUpdater(QDBusConnection &&bus, QObject *parent = nullptr) = delete;
    SoftwareUpdater(QDBusConnection &&bus, const QString &modulePath, QObject *parent = nullptr) = delete;

    [[nodiscard]] bool looksForUpdates() const override;
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
