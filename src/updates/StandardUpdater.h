// SPDX-License-Identifier: MIT
#pragma once

#include "platform/ApplicationLauncher.h"
#include "updates/TransferRules.h"
#include "updates/UpdateWindow.h"
#include "updates/feed/Appcast.h"

#include <QByteArrayList>
#include <QFutureWatcher>
#include <QObject>
#include <QPointer>
#include <QString>
#include <QUrl>

#include <chrono>
#include <optional>

class QDBusConnection;

namespace tunedeck {

class FileVerification;
class UpdateCheck;
class UpdateDownload;
class UserDefaults;

struct UpdaterConfiguration {
    /// Empty for a copy that gets its updates from elsewhere: from the system, or from the user who built it.
    QUrl feed;
    /// The Ed25519 public keys that verify updates, each in Base64.
    QByteArrayList publicKeys;
    RunningProgram program;
    QString downloadFolder;
    TransferRules transferRules = {};
    /// The longest time that a check takes.
    std::chrono::milliseconds feedDeadline = std::chrono::seconds(60);
};

/// Looks for a newer version when the user asks, and downloads it if the user wants it. Shows everything in one window.
/// Never uses the network unasked, and never installs anything.
class StandardUpdater : public QObject {
    Q_OBJECT

public:
    /// `bus` always refers to the current bus. It and `settings`, which keep the serial of the newest feed, must
    /// outlive this object.
    StandardUpdater(const UpdaterConfiguration &configuration, const QDBusConnection &bus, UserDefaults &settings,
        QObject *parent = nullptr);
    StandardUpdater(const UpdaterConfiguration &configuration, QDBusConnection &&bus, UserDefaults &settings,
        QObject *parent = nullptr) = delete;
    /// Stops a check or a download, and leaves nothing of it in the download folder.
    ~StandardUpdater() override;

public Q_SLOTS:
    /// Starts a check, unless a check, the offer of an update or its download is under way. Brings the window to the
    /// front.
    void checkForUpdates();

private:
    void startCheck();
    /// The highest serial of a feed that was believed. 0 if there is none.
    [[nodiscard]] qint64 newestSerial() const;
    void keepSerial(qint64 serial);
    void offer(const AppcastItem &update);
    void startDownload();
    void verifyAgain();
    void showNoFeed();
    void showFailure(UpdateFailure failure);
    /// Stops the check, the download and the verification, and forgets the update.
    void end();

    const UpdaterConfiguration m_configuration;
    const QDBusConnection &m_bus;
    UserDefaults &m_settings;
    QPointer<UpdateCheck> m_check;
    std::optional<AppcastItem> m_update; ///< the offered update, until it is downloaded
    QPointer<UpdateDownload> m_download;
    QString m_savedPath;
    FileStatement m_savedStatement;
    QPointer<FileVerification> m_verification;
    QFutureWatcher<bool> m_systemUpdaterSearch;
    ApplicationLauncher m_launcher{ApplicationLauncher::Accepts::AnyEntry};
    UpdateWindow m_window;
};

} // namespace tunedeck
