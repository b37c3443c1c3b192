// SPDX-License-Identifier: MIT
#include "updates/StandardUpdatesModule.h"

#include "platform/BundleInfo.h"
#include "updates/StandardUpdater.h"

#include <QStandardPaths>
#include <QSysInfo>

#include <memory>

namespace tunedeck {

UpdatesModule::Check StandardUpdatesModule::makeCheck(const QDBusConnection &bus, UserDefaults &settings) const
{
    const RunningProgram program{bundleInfo(u"CFBundleVersion").value_or(QString()),
        bundleInfo(u"CFBundleShortVersionString").value_or(QString()), QSysInfo::productVersion()};
    const auto updater = std::make_shared<StandardUpdater>(
        UpdaterConfiguration{QUrl(QString::fromUtf8(TUNEDECK_FEED_URL)),
            {QByteArrayLiteral(TUNEDECK_UPDATE_PUBLIC_KEY), QByteArrayLiteral(TUNEDECK_UPDATE_NEXT_PUBLIC_KEY)},
            program, QStandardPaths::writableLocation(QStandardPaths::DownloadLocation)},
        bus, settings);
    return [updater] { updater->checkForUpdates(); };
}

} // namespace tunedeck
