// SPDX-License-Identifier: MIT
#include "updates/StandardUpdater.h"

#include "platform/UserDefaults.h"
#include "updates/FileVerification.h"
#include "updates/UpdateCheck.h"
#include "updates/UpdateDownload.h"
#include "updates/feed/PublicKey.h"
#include "updates/feed/isSecureAddress.h"
#include "updates/inBackground.h"
#include "updates/showInFolder.h"
#include "updates/updatesLog.h"
#include "widgets/bringToFront.h"

#include <QStandardPaths>

#include <algorithm>

namespace tunedeck {

namespace {
using namespace std::chrono_literals;

constexpr auto closingPatience = 500ms;

QStringList systemUpdaters()
{
    return {QStringLiteral("org.gnome.Software"), QStringLiteral("org.kde.discover"), QStringLiteral("gnome-software"),
        QStringLiteral("org.gnome.PackageUpdater"), QStringLiteral("update-manager"), QStringLiteral("mintupdate"),
        QStringLiteral("synaptic")};
}

bool isInstalled(const QString &desktopEntry)
{
    return !QStandardPaths::locate(QStandardPaths::ApplicationsLocation, desktopEntry + QStringLiteral(".desktop"))
                .isEmpty();
}

bool hasSystemUpdater()
{
    const QStringList updaters = systemUpdaters();
    return std::any_of(updaters.begin(), updaters.end(), isInstalled);
}

/// Empty if one of them is not a key.
QList<PublicKey> keysFrom(const QByteArrayList &base64)
{
    QList<PublicKey> keys;
    for (const QByteArray &text : base64) {
        const std::optional<PublicKey> key = PublicKey::fromBase64(text);
        if (!key) {
            return {};
        }
        keys.append(*key);
    }
    return keys;
}
} // namespace

StandardUpdater::StandardUpdater(
    const UpdaterConfiguration &configuration, const QDBusConnection &bus, UserDefaults &settings, QObject *parent)
    : QObject(parent)
    , m_configuration(configuration)
    , m_bus(bus)
    , m_settings(settings)
{
    connect(&m_window, &UpdateWindow::rejected, this, &StandardUpdater::end);
    connect(&m_window, &UpdateWindow::downloadRequested, this, &StandardUpdater::startDownload);
    connect(&m_window, &UpdateWindow::showInFolderRequested, this, [this] { showInFolder(m_bus, m_savedPath); });
    connect(&m_window, &UpdateWindow::verificationRequested, this, &StandardUpdater::verifyAgain);
    connect(&m_window, &UpdateWindow::systemUpdaterRequested, this,
        [this] { m_launcher.launch(systemUpdaters(), QString()); });
    connect(&m_launcher, &ApplicationLauncher::launched, &m_window, &UpdateWindow::reject);
    connect(&m_launcher, &ApplicationLauncher::failed, this, [this] { showFailure(UpdateFailure::noSystemUpdater); });
    connect(&m_systemUpdaterSearch, &QFutureWatcher<bool>::finished, this, [this] {
        if (m_systemUpdaterSearch.result()) {
            m_window.offerSystemUpdater();
        }
    });
}

StandardUpdater::~StandardUpdater()
{
    qDeleteAll(findChildren<UpdateCheck *>());
    qDeleteAll(findChildren<UpdateDownload *>());
    // The program ends now, and takes down the libraries that a request uses.
    BackgroundWork::awaitEnd(closingPatience);
}

void StandardUpdater::checkForUpdates()
{
    if (!m_check && !m_update && !m_verification) {
        startCheck();
    }
    bringToFront(m_window);
}

void StandardUpdater::startCheck()
{
    if (m_configuration.feed.isEmpty()) {
        showNoFeed();
        return;
    }
    const QList<PublicKey> keys = keysFrom(m_configuration.publicKeys);
    if (!isSecureAddress(m_configuration.feed) || keys.isEmpty()) {
        showFailure(UpdateFailure::misconfigured);
        return;
    }
    m_check = new UpdateCheck(
        {m_configuration.transferRules, m_configuration.feedDeadline, keys, newestSerial(), m_configuration.program},
        this);
    connect(m_check, &UpdateCheck::believed, this, &StandardUpdater::keepSerial);
    connect(m_check, &UpdateCheck::found, this, &StandardUpdater::offer);
    connect(m_check, &UpdateCheck::failed, this, &StandardUpdater::showFailure);
    connect(m_check, &UpdateCheck::upToDate, this, [this] {
        end();
        m_window.showUpToDate(m_configuration.program.shortVersion);
    });
    connect(m_check, &UpdateCheck::foundForNewerSystem, this, [this](const AppcastItem &newest) {
        end();
        m_window.showForNewerSystem(newest, m_configuration.program.shortVersion);
    });
    m_window.showChecking();
    m_check->start(m_configuration.feed);
}

qint64 StandardUpdater::newestSerial() const
{
    // The file may say anything. No feed could ever be newer than a serial above the highest.
    const qint64 kept = m_settings.integerForKey(SettingsKey::newestUpdateFeed);
    return kept > 0 && kept <= highestSerial ? kept : 0;
}

void StandardUpdater::keepSerial(qint64 serial)
{
    if (serial > newestSerial()) {
        m_settings.setValue(SettingsKey::newestUpdateFeed, serial);
    }
}

void StandardUpdater::offer(const AppcastItem &update)
{
    const QByteArray statement = update.statement().text();
    if (statement.isEmpty() || !isSignedByOneOf(keysFrom(m_configuration.publicKeys), statement, update.signature)
        || !isSecureAddress(update.url)) {
        showFailure(UpdateFailure::notVerifiable);
        return;
    }
    end();
    m_update = update;
    m_window.showUpdate(update, m_configuration.program.shortVersion);
}

void StandardUpdater::startDownload()
{
    if (!m_update || m_download) {
        return;
    }
    m_download = new UpdateDownload(m_configuration.transferRules, *m_update, m_configuration.downloadFolder, this);
    connect(m_download, &UpdateDownload::progressed, &m_window, &UpdateWindow::setReceived);
    connect(m_download, &UpdateDownload::verifying, &m_window, &UpdateWindow::showVerifying);
    connect(m_download, &UpdateDownload::failed, this, &StandardUpdater::showFailure);
    connect(m_download, &UpdateDownload::saved, this, [this, statement = m_update->statement()](const QString &path) {
        end();
        m_savedPath = path;
        m_savedStatement = statement;
        m_window.showSaved(path);
    });
    m_window.showDownload(*m_update);
    m_download->start();
}

void StandardUpdater::verifyAgain()
{
    m_verification = new FileVerification(m_savedStatement, this);
    connect(m_verification, &FileVerification::finished, this, [this](bool isGenuine) {
        if (isGenuine) {
            end();
            m_window.showGenuine(m_savedPath);
        } else {
            showFailure(UpdateFailure::changed);
        }
    });
    m_window.showVerifying();
    m_verification->start(m_savedPath);
}

void StandardUpdater::showNoFeed()
{
    m_window.showNoFeed();
    m_systemUpdaterSearch.setFuture(inBackground(&hasSystemUpdater));
}

void StandardUpdater::showFailure(UpdateFailure failure)
{
    qCDebug(updatesLog) << "failed:" << failure;
    end();
    m_window.showFailure(failure);
}

void StandardUpdater::end()
{
    // They may be emitting the signal that led here, so they are deleted later.
    if (m_check) {
        m_check->disconnect(this);
        m_check->deleteLater();
        m_check.clear();
    }
    if (m_download) {
        m_download->disconnect(this);
        m_download->disconnect(&m_window);
        m_download->deleteLater();
        m_download.clear();
    }
    if (m_verification) {
        m_verification->disconnect(this);
        m_verification->deleteLater();
        m_verification.clear();
    }
    m_update.reset();
}

} // namespace tunedeck
