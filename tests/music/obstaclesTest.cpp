// SPDX-License-Identifier: MIT
#include "music/obstacles.h"

#include "music/MenuItemIdentifier.h"
#include "music/MusicConnector.h"
#include "music/isMenuItemEnabled.h"
#include "platform/WindowActivation.h"
#include "support/ScriptedMusicApplication.h"
#include "support/registerTest.h"

#include <QGuiApplication>
#include <QObject>
#include <QRegularExpression>
#include <QString>
#include <QStringList>
#include <QTest>

using namespace Qt::StringLiterals;

namespace tunedeck {

namespace {

/// Music that runs, answers, and takes every control.
struct Desk {
    Desk() { music.setPlayer(u"Strawberry"_s, true); }

    ScriptedMusicApplication music;
    WindowActivation windowActivation;
    MusicConnector connector{music, windowActivation};
};

QString silenceText()
{
    return u"Strawberry is not responding"_s;
}

} // namespace

/// The texts say why a control is disabled, and the menu items that have one are disabled.
class obstaclesTest : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void init() { QTest::failOnWarning(QRegularExpression(u".*"_s)); }

    void nothingIsInTheWayOfAPlayerThatTakesEverything()
    {
        const Desk desk;
        QCOMPARE(obstacleToCommands(desk.music), QString());
        QCOMPARE(obstacleToOtherTracks(desk.connector), QString());
        for (const MusicControl control :
            {MusicControl::position, MusicControl::volume, MusicControl::shuffle, MusicControl::repeat}) {
            QCOMPARE(obstacleTo(control, desk.music), QString());
        }
        const QStringList items = itemsOfMusic();
        for (const QString &item : items) {
            QCOMPARE(obstacleToMenuItem(item, desk.connector), QString());
        }
    }

    void whatAPlayerLacksOrKeepsIsNamed_data()
    {
        QTest::addColumn<MusicControl>("control");
        QTest::addColumn<ControlAnswer>("answer");
        QTest::addColumn<QString>("text");
        const auto row = [](const char *name, MusicControl control, ControlAnswer answer, const QString &text) {
            QTest::newRow(name) << control << answer << text;
        };
        row("no position", MusicControl::position, ControlAnswer::missing, u"Strawberry cannot seek in this track"_s);
        row("no volume", MusicControl::volume, ControlAnswer::missing, u"Strawberry has no volume control"_s);
        row("no shuffle", MusicControl::shuffle, ControlAnswer::missing, u"Strawberry has no shuffle mode"_s);
        row("no repeat", MusicControl::repeat, ControlAnswer::missing, u"Strawberry has no repeat mode"_s);
        row("its position", MusicControl::position, ControlAnswer::ignored, u"Strawberry cannot seek in this track"_s);
        row("its volume", MusicControl::volume, ControlAnswer::ignored, u"Strawberry keeps its own volume"_s);
        row("its shuffle", MusicControl::shuffle, ControlAnswer::ignored, u"Strawberry keeps its own shuffle mode"_s);
        row("its repeat", MusicControl::repeat, ControlAnswer::ignored, u"Strawberry keeps its own repeat mode"_s);
    }
    void whatAPlayerLacksOrKeepsIsNamed()
    {
        QFETCH(const MusicControl, control);
        QFETCH(const ControlAnswer, answer);
        QFETCH(const QString, text);
        Desk desk;
        desk.music.answerControl(control, answer);
        QCOMPARE(obstacleTo(control, desk.music), text);
        const bool isVolume = control == MusicControl::volume;
        for (const QString &item : {MenuItemIdentifier::volumeUp, MenuItemIdentifier::volumeDown}) {
            QCOMPARE(obstacleToMenuItem(item, desk.connector), isVolume ? text : QString());
            QCOMPARE(isMenuItemEnabled(item, desk.connector), !isVolume);
        }
    }

    void aPlayerWithoutANameIsCalledMusic()
    {
        Desk desk;
        desk.music.setPlayer(QString(), true);
        desk.music.answerControl(MusicControl::volume, ControlAnswer::missing);
        QCOMPARE(obstacleTo(MusicControl::volume, desk.music), u"Music has no volume control"_s);
    }

    void aSilentPlayerIsInTheWayOfEveryCommand()
    {
        Desk desk;
        desk.music.answerControl(MusicControl::volume, ControlAnswer::missing);
        desk.connector.setFeedType(FeedType::liveStream);
        desk.music.setResponding(false);
        QCOMPARE(obstacleToCommands(desk.music), silenceText());
        QCOMPARE(obstacleTo(MusicControl::volume, desk.music), silenceText());
        QCOMPARE(obstacleToOtherTracks(desk.connector), silenceText());
        const QStringList items = itemsOfMusic();
        for (const QString &item : items) {
            QCOMPARE(obstacleToMenuItem(item, desk.connector), silenceText());
            QVERIFY(!isMenuItemEnabled(item, desk.connector));
        }
    }

    void aLiveStreamHasNoOtherTracks()
    {
        Desk desk;
        desk.connector.setFeedType(FeedType::liveStream);
        const QString text = u"Live audio has no other tracks"_s;
        QCOMPARE(obstacleToOtherTracks(desk.connector), text);
        for (const QString &item : {MenuItemIdentifier::next, MenuItemIdentifier::previous}) {
            QCOMPARE(obstacleToMenuItem(item, desk.connector), text);
            QVERIFY(!isMenuItemEnabled(item, desk.connector));
        }
        QCOMPARE(obstacleToMenuItem(MenuItemIdentifier::playPause, desk.connector), QString());
        QVERIFY(isMenuItemEnabled(MenuItemIdentifier::playPause, desk.connector));
    }

    void aPlayerWithoutAWindowCannotShowIt()
    {
        Desk desk;
        desk.music.setPlayer(u"cmus"_s, false);
        QCOMPARE(obstacleToMenuItem(MenuItemIdentifier::showPlayer, desk.connector), u"cmus cannot show its window"_s);
    }

    void whereNoMusicRunsNothingIsSaidButOnlyOpeningAndClosingAreEnabled()
    {
        Desk desk;
        desk.music.answerControl(MusicControl::volume, ControlAnswer::missing);
        desk.music.setResponding(false);
        desk.music.quit();
        QCOMPARE(obstacleToCommands(desk.music), QString());
        const QStringList items = itemsOfMusic();
        for (const QString &item : items) {
            QCOMPARE(obstacleToMenuItem(item, desk.connector), QString());
            QVERIFY(!isMenuItemEnabled(item, desk.connector));
        }
        QVERIFY(isMenuItemEnabled(MenuItemIdentifier::openMusicApp, desk.connector));
        QVERIFY(isMenuItemEnabled(MenuItemIdentifier::closeWindow, desk.connector));
        QVERIFY(!isMenuItemEnabled(MenuItemIdentifier::totalTime, desk.connector));
    }

    void aSandboxKeepsMusicFromBeingLaunched()
    {
        Desk desk;
        QCOMPARE(obstacleToMenuItem(MenuItemIdentifier::openMusicApp, desk.connector), QString());
        desk.music.isLaunchable = false;
        QCOMPARE(obstacleToMenuItem(MenuItemIdentifier::openMusicApp, desk.connector),
            u"The sandbox that Tunedeck runs in lets it start no other programs. Start your player yourself."_s);
    }

private:
    /// The menu items that Music can be in the way of.
    [[nodiscard]] static QStringList itemsOfMusic()
    {
        using namespace MenuItemIdentifier;
        return {playPause, next, previous, volumeUp, volumeDown, showPlayer};
    }
};

} // namespace tunedeck

TUNEDECK_TEST(tunedeck::obstaclesTest, QGuiApplication)
#include "obstaclesTest.moc"
