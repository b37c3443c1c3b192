// SPDX-License-Identifier: MIT
#pragma once

#include "platform/ApplicationLauncher.h"
#include "updates/Appcast.h"
#include "updates/Transfer.h"
#include "updates/UpdateWindow.h"

#include <QByteArray>
#include <QFutureWatcher>
#include <QObject>
#include <QPointer>
#include <QString>
#include <QUrl>

#include <optional>

class QDBusConnection;

namespace tunedeck {

class UpdateCheck;
class UpdateDownload;

/// What an updater needs to know.
struct UpdaterConfiguration {
    /// Empty for a copy of the program that leaves updates to whoever it comes from: the system, or who built it.
    QUrl feed;
    /// In Base64, the Ed25519 key of those who make the program.
    QByteArray publicKey;
    RunningProgram program;
    QString downloadFolder;
    TransferRules transferRules = {};
};

/// Looks for a newer version when the user asks, and downloads it if the user wants it: nothing is asked of the network
/// otherwise, and nothing is ever installed. Shows all of it in one window.
class StandardUpdater : public QObject {
    Q_OBJECT

public:
    /// `bus` always tells of the bus that is, and must outlive this object.
    StandardUpdater(const UpdaterConfiguration &configuration, const QDBusConnection &bus, QObject *parent = nullptr);
    StandardUpdater(
        const UpdaterConfiguration &configuration, QDBusConnection &&bus, QObject *parent = nullptr) = delete;
    /// Gives up what is under way, without a trace in the download folder.
    ~StandardUpdater() override;

public Q_SLOTS:
    /// Brings the window forward if a check, the offer of an update or its download is under way.
    void checkForUpdates();

private:
    void startCheck();
    void offer(const AppcastItem &update);
    void startDownload();
    void showNoFeed();
    void showFailure(UpdateFailure failure);
    /// Forgets what is under way.
    void end();

    const UpdaterConfiguration m_configuration;
    const QDBusConnection &m_bus;
    QPointer<UpdateCheck> m_check;
    /// From when it is offered to when it is downloaded.
    std::optional<AppcastItem> m_update;
    QPointer<UpdateDownload> m_download;
    QString m_savedPath;
    QFutureWatcher<bool> m_systemUpdaterSearch;
    ApplicationLauncher m_launcher;
    UpdateWindow m_window;
};

} // namespace tunedeck
