// SPDX-License-Identifier: MIT
#include "portal/DesktopIntegration.h"

#include "ScriptedPortal.h"
#include "platform/UserDefaults.h"
#include "support/PrivateBus.h"
#include "support/failOnWarning.h"
#include "support/registerTest.h"

#include <QFile>
#include <QSignalSpy>
#include <QTemporaryDir>
#include <QTest>

#include <memory>

using namespace tunedeck;

using Way = ScriptedPortal::Way;

namespace {
/// A session whose desktop has a portal.
struct Session {
    [[nodiscard]] bool isOn(const QString &key) const { return defaults.boolForKey(key); }
    [[nodiscard]] QString entry() const { return folder.filePath(QStringLiteral("org.tunedeck.Tunedeck.desktop")); }
    [[nodiscard]] QString shortcutsNote() const { return integration.note(SettingsKey::globalShortcuts); }
    [[nodiscard]] QString startNote() const { return integration.note(SettingsKey::startWithSession); }

    QTemporaryDir folder;
    UserDefaults defaults{folder.filePath(QStringLiteral("settings"))};
    PrivateBus bus;
    QDBusConnection portalBus = ScriptedPortal::connectTo(bus);
    ScriptedPortal portal{portalBus};
    DesktopIntegration integration{
        defaults, {{QStringLiteral("next"), QStringLiteral("Next")}}, folder.path(), bus.address()};
};
} // namespace

class DesktopIntegrationTest : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void init() { failOnWarning(); }

    void aUserWhoWantsNothingOfItAsksTheDesktopForNothing()
    {
        Session session;
        session.integration.begin();
        session.integration.askAgain();
        QVERIFY(!QSignalSpy(&session.integration, &DesktopSettings::noteChanged).wait(100));
        QCOMPARE(session.portal.calls(), QStringList());
    }

    void theShortcutsAreAskedForFromTheStartOnceTheyAreWanted()
    {
        Session session;
        session.defaults.setBool(SettingsKey::globalShortcuts, true);
        QCOMPARE(session.portal.calls(), QStringList());
        session.integration.begin();
        QCOMPARE(session.shortcutsNote(), QStringLiteral("Waiting for the desktop…"));
        QTRY_COMPARE(session.shortcutsNote(), QStringLiteral("The keys are in the desktop's keyboard settings."));
        QSignalSpy pressed(&session.integration, &DesktopIntegration::shortcutPressed);
        ScriptedPortal::press(session.portalBus, session.portal.sessionPath(), QStringLiteral("next"), {});
        QTRY_COMPARE(pressed.count(), 1);
        QCOMPARE(pressed.constFirst().constFirst().toString(), QStringLiteral("next"));
        session.defaults.setBool(SettingsKey::globalShortcuts, false);
        QCOMPARE(session.shortcutsNote(), QString());
    }

    void whatTheDesktopSaysToTheShortcutsIsSaid()
    {
        Session session;
        session.integration.begin();
        session.portal.bind = Way::Decline;
        session.defaults.setBool(SettingsKey::globalShortcuts, true);
        QTRY_COMPARE(session.shortcutsNote(), QStringLiteral("The desktop refuses."));
        session.defaults.setBool(SettingsKey::globalShortcuts, false);
        session.portal.session = Way::Unknown;
        session.defaults.setBool(SettingsKey::globalShortcuts, true);
        QTRY_VERIFY(session.shortcutsNote().startsWith(QStringLiteral("This desktop offers none.")));
        session.defaults.setBool(SettingsKey::globalShortcuts, false);
        session.portal.session = Way::WrongType;
        session.defaults.setBool(SettingsKey::globalShortcuts, true);
        QTRY_COMPARE(session.shortcutsNote(), QStringLiteral("The desktop gives no usable answer."));
    }

    void aNewBusIsAskedAgain()
    {
        Session session;
        session.defaults.setBool(SettingsKey::globalShortcuts, true);
        session.integration.begin();
        QTRY_COMPARE(session.portal.calls().size(), 3);
        session.integration.askAgain();
        QTRY_COMPARE(session.portal.calls().size(), 6);
    }

    void theStartWithTheSessionIsArrangedWhenTheUserChoosesItAndNotAtEveryStart()
    {
        Session session;
        session.defaults.setBool(SettingsKey::startWithSession, true);
        session.integration.begin();
        QCOMPARE(session.startNote(), QString());
        session.defaults.setBool(SettingsKey::startWithSession, false);
        QCOMPARE(session.startNote(), QStringLiteral("Waiting for the desktop…"));
        QTRY_COMPARE(session.startNote(), QString());
        QCOMPARE(session.portal.backgroundOptions().value(QStringLiteral("autostart")).toBool(), false);
        session.defaults.setBool(SettingsKey::startWithSession, true);
        QTRY_COMPARE(session.startNote(), QString());
        QCOMPARE(session.portal.backgroundOptions().value(QStringLiteral("autostart")).toBool(), true);
        QCOMPARE(session.portal.backgroundOptions().value(QStringLiteral("commandline")).toStringList().constLast(),
            QStringLiteral("--autostart"));
        QVERIFY(session.isOn(SettingsKey::startWithSession));
    }

    void aStartWithTheSessionThatTheDesktopHasNotAnsweredIsAskedForAtTheNextStart()
    {
        Session session;
        const QString settings = session.folder.filePath(QStringLiteral("settings of two runs"));
        session.portal.background = Way::Silent;
        {
            UserDefaults defaults(settings);
            DesktopIntegration integration(defaults, {}, session.folder.path(), session.bus.address());
            integration.begin();
            defaults.setBool(SettingsKey::startWithSession, true);
            QTRY_COMPARE(session.portal.calls().size(), 2);
        }
        session.portal.background = Way::Grant;
        {
            UserDefaults defaults(settings);
            DesktopIntegration integration(defaults, {}, session.folder.path(), session.bus.address());
            integration.begin();
            QTRY_COMPARE(session.portal.calls().size(), 4);
            QCOMPARE(session.portal.backgroundOptions().value(QStringLiteral("autostart")).toBool(), true);
            QTRY_COMPARE(integration.note(SettingsKey::startWithSession), QString());
            QVERIFY(defaults.boolForKey(SettingsKey::startWithSession));
        }
        UserDefaults defaults(settings);
        DesktopIntegration integration(defaults, {}, session.folder.path(), session.bus.address());
        integration.begin();
        QVERIFY(!QSignalSpy(&integration, &DesktopSettings::noteChanged).wait(100));
        QCOMPARE(session.portal.calls().size(), 4);
    }

    void theBoxShowsThatADesktopRefuses()
    {
        Session session;
        session.integration.begin();
        session.portal.background = Way::Decline;
        session.defaults.setBool(SettingsKey::startWithSession, true);
        QTRY_COMPARE(session.startNote(), QStringLiteral("The desktop refuses."));
        QVERIFY(!session.isOn(SettingsKey::startWithSession));
        QCOMPARE(session.portal.calls().size(), 2);
    }

    void theBoxShowsThatTheEntryIsTheUsers()
    {
        Session session;
        session.integration.begin();
        QFile entry(session.entry());
        QVERIFY(entry.open(QIODevice::WriteOnly));
        entry.write("[Desktop Entry]\nHidden=true\n");
        entry.close();
        session.defaults.setBool(SettingsKey::startWithSession, true);
        QTRY_COMPARE(session.startNote(),
            QStringLiteral("You have changed the entry in the autostart folder, so it stays as it is."));
        QVERIFY(!session.isOn(SettingsKey::startWithSession));
    }

    void theBoxShowsThatTheFolderCannotBeWritten()
    {
        const QTemporaryDir folder;
        UserDefaults defaults(folder.filePath(QStringLiteral("settings")));
        const PrivateBus bus;
        DesktopIntegration integration(defaults, {}, QStringLiteral("/proc/autostart"), bus.address());
        integration.begin();
        defaults.setBool(SettingsKey::startWithSession, true);
        QTRY_COMPARE(
            integration.note(SettingsKey::startWithSession), QStringLiteral("The autostart folder cannot be changed."));
        QVERIFY(!defaults.boolForKey(SettingsKey::startWithSession));
    }
};

TUNEDECK_TEST(DesktopIntegrationTest, QCoreApplication)
#include "DesktopIntegrationTest.moc"
