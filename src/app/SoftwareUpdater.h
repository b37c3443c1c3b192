// SPDX-License-Identifier: MIT
#pragma once

#include "Updater.h"

#include <QMessageBox>
#include <QString>

#include <functional>
#include <memory>

namespace tunedeck {

/// The updater, which is in a module of its own: it is loaded when it is first asked for. One that is missing, or of
/// another version than the program, is told in a message box.
class SoftwareUpdater : public Updater {
    Q_OBJECT

public:
    explicit SoftwareUpdater(QObject *parent = nullptr);
    /// With the module's path.
    explicit SoftwareUpdater(const QString &modulePath, QObject *parent = nullptr);

    void checkForUpdates() override;

private:
    [[nodiscard]] std::function<void()> loadModule() const;
    void reportMissingModule();

    const QString m_modulePath;
    std::function<void()> m_check;
    std::unique_ptr<QMessageBox> m_message;
};

} // namespace tunedeck
