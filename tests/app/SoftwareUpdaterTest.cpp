// SPDX-License-Identifier: MIT
#include "app/SoftwareUpdater.h"

#include "platform/UserDefaults.h"
#include "support/Desktop.h"
#include "support/registerTest.h"

#include <QApplication>
#include <QDBusConnection>
#include <QDialog>
#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QProcess>
#include <QTemporaryDir>
#include <QTest>

using namespace Qt::StringLiterals;

namespace tunedeck {

namespace {
QList<QDialog *> openDialogs()
{
    QList<QDialog *> open;
    for (QWidget *widget : QApplication::topLevelWidgets()) {
        if (auto *dialog = qobject_cast<QDialog *>(widget); dialog && dialog->isVisible()) {
            open.append(dialog);
        }
    }
    return open;
}

QString toldByTheMessageBox()
{
    const QList<QDialog *> dialogs = openDialogs();
    const auto *box = dialogs.size() == 1 ? qobject_cast<QMessageBox *>(dialogs.constFirst()) : nullptr;
    return box ? box->text() : QString();
}

const QString isMissing = u"Tunedeck's updater is missing or belongs to another version."_s;
} // namespace

class SoftwareUpdaterTest : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void initTestCase()
    {
        for (const char *variable : {"HOME", "XDG_DATA_HOME", "XDG_CONFIG_HOME"}) {
            qputenv(variable, m_home.path().toUtf8());
        }
        qputenv("XDG_DATA_DIRS", m_home.filePath(u"empty"_s).toUtf8());
    }
    void init() { failOnWarning(); }

    void aCopyThatIsBuiltWithoutAFeedDoesNotLookForUpdates()
    {
        const SoftwareUpdater updater(m_bus, m_settings, QStringLiteral(UPDATES_MODULE));
        QCOMPARE(updater.looksForUpdates(), TUNEDECK_LOOKS_FOR_UPDATES == 1);
    }

    void theModuleIsLoadedForTheFirstCheck()
    {
        const auto isLoaded = [] {
            QFile maps(u"/proc/self/maps"_s);
            return maps.open(QIODevice::ReadOnly) && maps.readAll().contains("/tunedeck-updates.so");
        };
        SoftwareUpdater updater(m_bus, m_settings, QStringLiteral(UPDATES_MODULE));
        QVERIFY(!isLoaded());
        updater.checkForUpdates();
        QVERIFY(isLoaded());
    }

    void theModuleAnswersInAWindowOfItsOwn()
    {
        SoftwareUpdater updater(m_bus, m_settings, QStringLiteral(UPDATES_MODULE));
        QCOMPARE(openDialogs().size(), 0);
        updater.checkForUpdates();
        QCOMPARE(openDialogs().size(), 1);
        QCOMPARE(
            QByteArray(openDialogs().constFirst()->metaObject()->className()), QByteArray("tunedeck::UpdateWindow"));
        QVERIFY(!openDialogs().constFirst()->isModal());
        QVERIFY(!openDialogs().constFirst()->testAttribute(Qt::WA_QuitOnClose));
        updater.checkForUpdates();
        QCOMPARE(openDialogs().size(), 1);
    }

    void theWindowGoesWithTheUpdater()
    {
        {
            SoftwareUpdater updater(m_bus, m_settings, QStringLiteral(UPDATES_MODULE));
            updater.checkForUpdates();
            QCOMPARE(openDialogs().size(), 1);
        }
        QCOMPARE(openDialogs().size(), 0);
    }

    void aModuleThatCannotBeHadIsToldInOneMessage_data()
    {
        QTest::addColumn<QString>("path");
        QTest::newRow("missing") << m_home.filePath(u"nothing.so"_s);
        QTest::newRow("of another version") << QStringLiteral(OTHER_VERSION_MODULE);
        QTest::newRow("no module") << QCoreApplication::applicationFilePath();
        QTest::newRow("a folder") << m_home.path();
    }
    void aModuleThatCannotBeHadIsToldInOneMessage()
    {
        QFETCH(const QString, path);
        SoftwareUpdater updater(m_bus, m_settings, path);
        updater.checkForUpdates();
        QCOMPARE(toldByTheMessageBox(), isMissing);
        QVERIFY(!openDialogs().constFirst()->isModal());
        QVERIFY(!openDialogs().constFirst()->testAttribute(Qt::WA_QuitOnClose));
        updater.checkForUpdates();
        QCOMPARE(toldByTheMessageBox(), isMissing);
    }

    void theProgramAndItsModuleLieAsInstalled()
    {
        const QFileInfo program(QStringLiteral(TUNEDECK_PROGRAM));
        QCOMPARE(QFileInfo(program.dir(), QStringLiteral(TUNEDECK_UPDATES_PATH)).canonicalFilePath(),
            QFileInfo(QStringLiteral(UPDATES_MODULE)).canonicalFilePath());
        QVERIFY(QFileInfo::exists(QStringLiteral(UPDATES_MODULE)));
    }

    void theProgramItselfNeedsNoNetwork()
    {
        QProcess readelf;
        readelf.start(u"readelf"_s, {u"--dynamic"_s, QStringLiteral(TUNEDECK_PROGRAM)});
        QVERIFY(readelf.waitForFinished());
        const QByteArray needed = readelf.readAllStandardOutput();
        QVERIFY(needed.contains("[libQt6Widgets.so"));
        QVERIFY(!needed.contains("[libQt6Network.so"));
        QVERIFY(!needed.contains("[libsodium.so"));
        QVERIFY(!needed.contains("[libcurl.so"));
    }

private:
    QTemporaryDir m_home;
    UserDefaults m_settings{m_home.filePath(u"settings"_s)};
    const QDBusConnection m_bus{u"none"_s};
};

} // namespace tunedeck

TUNEDECK_TEST(tunedeck::SoftwareUpdaterTest, QApplication)
#include "SoftwareUpdaterTest.moc"
