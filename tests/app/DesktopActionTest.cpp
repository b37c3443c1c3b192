// SPDX-License-Identifier: MIT
#include "app/DesktopAction.h"

#include "app/AppDelegate.h"
#include "music/MusicConnector.h"
#include "support/Desktop.h"
#include "support/registerTest.h"
#include "window/WindowController.h"

#include <QApplication>
#include <QFile>
#include <QRegularExpression>
#include <QSet>
#include <QSignalSpy>
#include <QTest>

using namespace tunedeck;

class DesktopActionTest : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void init() { failOnWarning(); }
    void cleanup() { QApplication::setPalette(QPalette()); }

    void thoseOfTheDesktopEntryAreAmongThem()
    {
        QFile entry(QStringLiteral(DESKTOP_ENTRY));
        QVERIFY(entry.open(QIODevice::ReadOnly));
        const QStringList lines = QString::fromUtf8(entry.readAll()).split(u'\n');
        const QStringList found = lines.filter(QRegularExpression(QStringLiteral("^Actions=")));
        QCOMPARE(found.size(), 1);
        const QStringList names = found.constFirst().mid(8).split(u';', Qt::SkipEmptyParts);
        QCOMPARE(names.size(), 7);
        for (const QString &name : names) {
            QVERIFY2(desktopActionNamed(name), qPrintable(name));
        }
    }

    void eachHasATitleOfItsOwn()
    {
        QSet<QString> titles;
        const QStringList names = desktopActionNames();
        for (const QString &name : names) {
            titles.insert(desktopActionTitle(desktopActionNamed(name).value()));
        }
        QCOMPARE(titles.size(), 12);
        QVERIFY(titles.contains(QStringLiteral("Show or hide the window")));
    }

    void eachIsKnownByItsName()
    {
        QCOMPARE(desktopActionNamed(u"play-pause"), DesktopAction::PlayPause);
        QCOMPARE(desktopActionNamed(u"next"), DesktopAction::Next);
        QCOMPARE(desktopActionNamed(u"previous"), DesktopAction::Previous);
        QCOMPARE(desktopActionNamed(u"stop"), DesktopAction::Stop);
        QCOMPARE(desktopActionNamed(u"seek-forward"), DesktopAction::SeekForward);
        QCOMPARE(desktopActionNamed(u"seek-backward"), DesktopAction::SeekBackward);
        QCOMPARE(desktopActionNamed(u"volume-up"), DesktopAction::VolumeUp);
        QCOMPARE(desktopActionNamed(u"volume-down"), DesktopAction::VolumeDown);
        QCOMPARE(desktopActionNamed(u"show-or-hide"), DesktopAction::ShowOrHide);
        QCOMPARE(desktopActionNamed(u"playlists"), DesktopAction::Playlists);
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
        QVERIFY(needsMusic(DesktopAction::VolumeUp));
        QVERIFY(needsMusic(DesktopAction::SeekForward));
        QVERIFY(!needsMusic(DesktopAction::KeepAbove));
        QVERIFY(!needsMusic(DesktopAction::ShowOrHide));
        QVERIFY(!needsMusic(DesktopAction::Playlists));
    }

    void whatCannotBeDoneNowIsNotDoneAndSaysWhy()
    {
        Desktop desktop;
        desktop.music.setRunning(false);
        MusicConnector connector(desktop.music, desktop.windowActivation);
        AppDelegate delegate(connector, desktop.defaults, desktop.appearance, desktop.windowActivation, desktop.players,
            desktop.desktopEntries);
        for (const DesktopAction action : {DesktopAction::PlayPause, DesktopAction::Stop, DesktopAction::Next,
                 DesktopAction::Previous, DesktopAction::SeekForward, DesktopAction::SeekBackward,
                 DesktopAction::VolumeUp, DesktopAction::VolumeDown, DesktopAction::RaisePlayer}) {
            QCOMPARE(perform(action, delegate, {}), QStringLiteral("Music is not open"));
        }
        desktop.music.setRunning(true);
        desktop.music.setPlayer(QStringLiteral("Player"), false);
        QCOMPARE(perform(DesktopAction::RaisePlayer, delegate, {}), QStringLiteral("Player cannot show its window"));
        desktop.music.answers.playerPosition = 20;
        desktop.music.answerControl(MusicControl::position, ControlAnswer::missing);
        QCOMPARE(perform(DesktopAction::SeekForward, delegate, {}), QStringLiteral("Player cannot seek in this track"));
        desktop.music.answerControl(MusicControl::volume, ControlAnswer::missing);
        QCOMPARE(perform(DesktopAction::VolumeUp, delegate, {}), QStringLiteral("Player has no volume control"));
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
        desktop.music.clearRecords();
        desktop.music.answers.playerPosition = 7;
        for (const DesktopAction action : {DesktopAction::SeekForward, DesktopAction::SeekBackward}) {
            QCOMPARE(perform(action, delegate, {}), QString());
        }
        desktop.music.answers.playerPosition = 2;
        QCOMPARE(perform(DesktopAction::SeekBackward, delegate, {}), QString());
        QCOMPARE(desktop.music.commands(),
            (QStringList{QStringLiteral("setPlayerPosition 12"), QStringLiteral("setPlayerPosition 2"),
                QStringLiteral("setPlayerPosition 0")}));
        desktop.music.clearRecords();
        connector.setVolume(50);
        QCOMPARE(perform(DesktopAction::VolumeUp, delegate, {}), QString());
        QCOMPARE(perform(DesktopAction::VolumeDown, delegate, {}), QString());
        QCOMPARE(desktop.music.commands(),
            (QStringList{QStringLiteral("setSoundVolume 50"), QStringLiteral("setSoundVolume 54"),
                QStringLiteral("setSoundVolume 50")}));
        QCOMPARE(perform(DesktopAction::KeepAbove, delegate, {}), QString());
        QVERIFY(controller.keepAboveAllWindows());
    }

    void stopPausesWhatPlaysAndStartsNothing()
    {
        Desktop desktop;
        desktop.music.setRunning(true);
        MusicConnector connector(desktop.music, desktop.windowActivation);
        AppDelegate delegate(connector, desktop.defaults, desktop.appearance, desktop.windowActivation, desktop.players,
            desktop.desktopEntries);
        QCOMPARE(perform(DesktopAction::Stop, delegate, {}), QString());
        QCOMPARE(desktop.music.commands(), QStringList());
        desktop.playTrack();
        desktop.music.clearRecords();
        QCOMPARE(perform(DesktopAction::Stop, delegate, {}), QString());
        QCOMPARE(desktop.music.commands(), {QStringLiteral("playpause")});
    }

    void whatShowsTheWindowIsAskedOfTheApplicationWithItsToken()
    {
        Desktop desktop;
        MusicConnector connector(desktop.music, desktop.windowActivation);
        AppDelegate delegate(connector, desktop.defaults, desktop.appearance, desktop.windowActivation, desktop.players,
            desktop.desktopEntries);
        qRegisterMetaType<ActivationToken>();
        QSignalSpy showOrHide(&delegate, &AppDelegate::showOrHideRequested);
        QSignalSpy playlists(&delegate, &AppDelegate::playlistsRequested);
        const ActivationToken token{.x11StartupId = {}, .waylandToken = QStringLiteral("token")};
        QCOMPARE(perform(DesktopAction::ShowOrHide, delegate, token), QString());
        QCOMPARE(perform(DesktopAction::Playlists, delegate, token), QString());
        QCOMPARE(showOrHide.count(), 1);
        QCOMPARE(showOrHide.constFirst().constFirst().value<ActivationToken>(), token);
        QCOMPARE(playlists.count(), 1);
        QCOMPARE(playlists.constFirst().constFirst().value<ActivationToken>(), token);
    }
};

TUNEDECK_TEST(DesktopActionTest, QApplication)
#include "DesktopActionTest.moc"
