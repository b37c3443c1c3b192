// SPDX-License-Identifier: MIT
#include "app/SoftwareUpdater.h"

#include "platform/BundleInfo.h"
#include "updates/UpdatesModule.h"
#include "widgets/bringToFront.h"

#include <QCoreApplication>
#include <QDir>
#include <QJsonObject>
#include <QPluginLoader>

namespace tunedeck {

namespace {
QString standardModulePath()
{
    return QDir(QCoreApplication::applicationDirPath()).filePath(QStringLiteral(TUNEDECK_UPDATES_PATH));
}
} // namespace

SoftwareUpdater::SoftwareUpdater(const QDBusConnection &bus, UserDefaults &settings, QObject *parent)
    : SoftwareUpdater(bus, settings, standardModulePath(), parent)
{
}

SoftwareUpdater::SoftwareUpdater(
    const QDBusConnection &bus, UserDefaults &settings, const QString &modulePath, QObject *parent)
    : Updater(parent)
    , m_bus(bus)
    , m_settings(settings)
    , m_modulePath(modulePath)
{
}

bool SoftwareUpdater::looksForUpdates() const
{
    return TUNEDECK_LOOKS_FOR_UPDATES != 0;
}

void SoftwareUpdater::checkForUpdates()
{
    if (!m_check) {
        m_check = loadModule();
    }
    if (m_check) {
        m_check();
    } else {
        reportMissingModule();
    }
}

std::function<void()> SoftwareUpdater::loadModule() const
{
    QPluginLoader loader(m_modulePath);
    const QString wanted =
        QStringLiteral(TUNEDECK_UPDATES_MODULE) + bundleInfo(u"CFBundleShortVersionString").value_or(QString());
    if (loader.metaData().value(QLatin1String("IID")).toString() != wanted) {
        return {};
    }
    const auto *module = qobject_cast<UpdatesModule *>(loader.instance());
    return module ? module->makeCheck(m_bus, m_settings) : nullptr;
}

void SoftwareUpdater::reportMissingModule()
{
    if (!m_message) {
        m_message =
            std::make_unique<QMessageBox>(QMessageBox::Warning, tr("Software Update", "Updates: title of the window"),
                tr("Tunedeck's updater is missing or belongs to another version.", "Updates: title of an error"),
                QMessageBox::Close);
        m_message->setInformativeText(tr("Install Tunedeck again.", "Updates: what to do about an error"));
        m_message->setModal(false);
        m_message->setAttribute(Qt::WA_QuitOnClose, false);
    }
    bringToFront(*m_message);
}

} // namespace tunedeck
