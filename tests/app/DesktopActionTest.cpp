// SPDX-License-Identifier: MIT
#include "app/DesktopAction.h"

#include "app/AppDelegate.h"
#include "music/MusicConnector.h"
#include "support/Desktop.h"
#include "support/registerTest.h"
#include "window/WindowController.h"

#include <QApplication>
#include <QFile>
#include <QTest>

using namespace tunedeck;

class DesktopActionTest : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void init() { failOnWarning(); }
    void cleanup() { QApplication::setPalette(QPalette()); }

    void theyAreThoseOfTheDesktopEntry()
    {
        QFile entry(QStringLiteral(DESKTOP_ENTRY));
        QVERIFY(entry.open(QIODevice::ReadOnly));
        const QStringList lines = QString::fromUtf8(entry.readAll()).split(u'\n');
        QVERIFY(lines.contains(QStringLiteral("Actions=") + desktopActionNames().join(u';') + u';'));
    }

    void eachIsKnownByItsName()
    {
        QCOMPARE(desktopActionNamed(u"play-pause"), DesktopAction::PlayPause);
        QCOMPARE(desktopActionNamed(u"next"), DesktopAction::Next);
        QCOMPARE(desktopActionNamed(u"previous"), DesktopAction::Previous);
        QCOMPARE(desktopActionNamed(u"raise-player"), DesktopAction::RaisePlayer);
        QCOMPARE(desktopActionNamed(u"keep-above"), DesktopAction::KeepAbove);
        QVERIFY(!desktopActionNamed(u""));
        QVERIFY(!desktopActionNamed(u"quit"));
        for (const QString &name : desktopActionNames()) {
            QCOMPARE(desktopActionName(desktopActionNamed(name).value()), name);
        }
    }

    void onlyTheWindowsOwnNeedsNoMusic()
    {
        QVERIFY(needsMusic(DesktopAction::PlayPause));
        QVERIFY(needsMusic(DesktopAction::Next));
        QVERIFY(needsMusic(DesktopAction::Previous));
        QVERIFY(needsMusic(DesktopAction::RaisePlayer));
        QVERIFY(!needsMusic(DesktopAction::KeepAbove));
    }

    void whatCannotBeDoneNowIsNotDoneAndSaysWhy()
    {
        Desktop desktop;
        desktop.music.setRunning(false);
        MusicConnector connector(desktop.music, desktop.windowActivation);
        AppDelegate delegate(connector, desktop.defaults, desktop.appearance, desktop.windowActivation, desktop.players,
            desktop.desktopEntries);
        for (const DesktopAction action :
            {DesktopAction::PlayPause, DesktopAction::Next, DesktopAction::Previous, DesktopAction::RaisePlayer}) {
            QCOMPARE(perform(action, delegate, {}), QStringLiteral("Music is not open"));
        }
        desktop.music.setRunning(true);
        desktop.music.setPlayer(QStringLiteral("Player"), false);
        QCOMPARE(perform(DesktopAction::RaisePlayer, delegate, {}), QStringLiteral("Player cannot show its window"));
        desktop.music.setResponding(false);
        QCOMPARE(perform(DesktopAction::Next, delegate, {}), QStringLiteral("Player is not responding"));
        QCOMPARE(desktop.music.commands(), QStringList());
    }

    void eachDoesWhatItSays()
    {
        Desktop desktop;
        desktop.music.setRunning(true);
        MusicConnector connector(desktop.music, desktop.windowActivation);
        AppDelegate delegate(connector, desktop.defaults, desktop.appearance, desktop.windowActivation, desktop.players,
            desktop.desktopEntries);
        const WindowController controller(desktop.defaults);
        QCOMPARE(perform(DesktopAction::PlayPause, delegate, {}), QString());
        QCOMPARE(perform(DesktopAction::Next, delegate, {}), QString());
        QCOMPARE(perform(DesktopAction::Previous, delegate, {}), QString());
        QCOMPARE(desktop.music.commands(),
            (QStringList{QStringLiteral("playpause"), QStringLiteral("nextTrack"), QStringLiteral("backTrack")}));
        desktop.music.clearRecords();
        desktop.music.setPlayer(QStringLiteral("Player"), true);
        const ActivationToken token{.x11StartupId = {}, .waylandToken = QStringLiteral("token")};
        QCOMPARE(perform(DesktopAction::RaisePlayer, delegate, token), QString());
        QCOMPARE(desktop.music.commands(), {QStringLiteral("showPlayer token")});
        QCOMPARE(perform(DesktopAction::KeepAbove, delegate, {}), QString());
        QVERIFY(controller.keepAboveAllWindows());
    }
};

TUNEDECK_TEST(DesktopActionTest, QApplication)
#include "DesktopActionTest.moc"
