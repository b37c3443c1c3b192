// SPDX-License-Identifier: MIT
#include "ConnectorObserver.h"
#include "platform/WindowActivation.h"
#include "support/ScriptedMusicApplication.h"
#include "support/abortedRun.h"
#include "support/registerTest.h"

#include <QGuiApplication>
#include <QRegularExpression>
#include <QTest>

#include <limits>

using namespace tunedeck;
using namespace Qt::StringLiterals;

namespace {

/// Runs the case that must end the program, in a process of its own.
void goThroughFatalCase(const QString &name)
{
    const WindowActivation windowActivation;
    ScriptedMusicApplication music;
    MusicConnector connector(music, windowActivation);
    if (name == u"repeat") {
        connector.setRepeat(static_cast<RepeatMode>(3));
    } else if (name == u"delta") {
        connector.adjustVolume(std::numeric_limits<double>::quiet_NaN());
    } else {
        connector.setVolume(name.toDouble());
    }
}

} // namespace

class MusicConnectorCommandsTest : public QObject {
    Q_OBJECT

private:
    const WindowActivation m_windowActivation;

private Q_SLOTS:
    void init() { QTest::failOnWarning(QRegularExpression(u".*"_s)); }

    void playPauseThatLeavesMusicIdleStopsTheProgressTimer_data()
    {
        QTest::addColumn<std::optional<FourCharCode>>("state");
        QTest::addColumn<bool>("pollsProgress");
        QTest::newRow("paused") << std::optional(fourCharCode("kPSp")) << false;
        QTest::newRow("stopped") << std::optional(fourCharCode("kPSS")) << false;
        QTest::newRow("playing") << std::optional(fourCharCode("kPSP")) << true;
        QTest::newRow("not answered") << std::optional<FourCharCode>() << true;
    }
    void playPauseThatLeavesMusicIdleStopsTheProgressTimer()
    {
        QFETCH(std::optional<FourCharCode>, state);
        ScriptedMusicApplication music;
        MusicConnector connector(music, m_windowActivation);
        music.answers.playerState = PlayerState::playing;
        connector.setFeedType(FeedType::streamedTrack);

        music.answers.playerState = state;
        connector.stopProgressPollingIfIdle();
        QTEST(connector.isProgressPollingTimerActive(), "pollsProgress");
        QVERIFY(connector.isRefreshTrackTimerActive());
    }

    void withMusicNotRunningTheTimersAreLeftAlone()
    {
        ScriptedMusicApplication music;
        MusicConnector connector(music, m_windowActivation);
        music.answers.playerState = PlayerState::playing;
        connector.setFeedType(FeedType::streamedTrack);

        music.answers.playerState = PlayerState::paused;
        music.setRunning(false);
        connector.stopProgressPollingIfIdle();
        QVERIFY(connector.isProgressPollingTimerActive());
        QVERIFY(connector.isRefreshTrackTimerActive());
    }

    void nextAfterMusicQuitLeavesTheTrackNone()
    {
        ScriptedMusicApplication music;
        MusicConnector connector(music, m_windowActivation);
        music.quit();
        connector.refreshTrackInfo();
        QCOMPARE(connector.feedType(), FeedType::unknown);
        QCOMPARE(connector.currentTrack(), std::nullopt);
        QCOMPARE(music.commands(), QStringList());
    }

    void shuffleIsWhatMusicReportsAfterTheWrite()
    {
        ScriptedMusicApplication music;
        MusicConnector connector(music, m_windowActivation);
        ConnectorObserver observer(connector);

        music.answers.shuffleEnabled = true;
        connector.setShuffle(true);
        QCOMPARE(music.commands(), QStringList(u"setShuffleEnabled true"_s));
        QCOMPARE(observer.take(), QStringList(u"shuffleEnabled true"_s));

        // Refused, so the value stays, and is announced nevertheless.
        connector.setShuffle(false);
        QCOMPARE(music.commands().last(), u"setShuffleEnabled false"_s);
        QCOMPARE(observer.take(), QStringList(u"shuffleEnabled true"_s));

        music.answers.shuffleEnabled.reset();
        connector.setShuffle(true);
        QCOMPARE(observer.take(), QStringList(u"shuffleEnabled false"_s));
    }

    void shuffleIsReadBackAlsoWhereMusicTakesNoWrite()
    {
        ScriptedMusicApplication music;
        music.unansweredCommands = {u"setShuffleEnabled"_s};
        MusicConnector connector(music, m_windowActivation);
        music.answers.shuffleEnabled = true;
        connector.setShuffle(false);
        QCOMPARE(music.commands(), QStringList());
        QCOMPARE(connector.shuffleEnabled(), true);
    }

    void repeatIsSentAsItsCode_data()
    {
        QTest::addColumn<RepeatMode>("mode");
        QTest::addColumn<QString>("command");
        QTest::newRow("off") << RepeatMode::off << u"setSongRepeat kRpO"_s;
        QTest::newRow("one") << RepeatMode::one << u"setSongRepeat kRp1"_s;
        QTest::newRow("all") << RepeatMode::all << u"setSongRepeat kAll"_s;
    }
    void repeatIsSentAsItsCode()
    {
        QFETCH(RepeatMode, mode);
        ScriptedMusicApplication music;
        MusicConnector connector(music, m_windowActivation);
        connector.setRepeat(mode);
        QCOMPARE(music.commands().size(), 1);
        QTEST(music.commands().first(), "command");
    }

    void aRefusedRepeatStaysWhatMusicReports()
    {
        ScriptedMusicApplication music;
        music.answers.songRepeat = SongRepeat::all;
        MusicConnector connector(music, m_windowActivation);
        ConnectorObserver observer(connector);
        connector.setRepeat(RepeatMode::one);
        QCOMPARE(observer.take(), QStringList(u"repeatMode 2"_s));

        music.unansweredCommands = {u"setSongRepeat"_s};
        connector.setRepeat(RepeatMode::off);
        QCOMPARE(observer.take(), QStringList(u"repeatMode 2"_s));
        QCOMPARE(music.commands(), QStringList(u"setSongRepeat kRp1"_s));
    }

    void withMusicNotRunningShuffleAndRepeatKeepTheirValue()
    {
        ScriptedMusicApplication music;
        music.answers.shuffleEnabled = true;
        music.answers.songRepeat = SongRepeat::all;
        MusicConnector connector(music, m_windowActivation);
        music.setRunning(false);
        ConnectorObserver observer(connector);
        connector.setShuffle(false);
        connector.setRepeat(RepeatMode::off);
        QCOMPARE(observer.take(), QStringList());
        QCOMPARE(connector.shuffleEnabled(), true);
        QCOMPARE(connector.repeatMode(), RepeatMode::all);
    }

    void theVolumeIsKeptAsAskedAndSentWithoutItsFraction_data()
    {
        QTest::addColumn<double>("volume");
        QTest::addColumn<QString>("command");
        QTest::newRow("fraction") << 55.7 << u"setSoundVolume 55"_s;
        QTest::newRow("not clamped above") << 150.0 << u"setSoundVolume 150"_s;
        QTest::newRow("not clamped below") << -3.7 << u"setSoundVolume -3"_s;
        QTest::newRow("the least of 64 bits") << -9223372036854775808.0 << u"setSoundVolume -9223372036854775808"_s;
    }
    void theVolumeIsKeptAsAskedAndSentWithoutItsFraction()
    {
        QFETCH(double, volume);
        ScriptedMusicApplication music;
        MusicConnector connector(music, m_windowActivation);
        connector.setVolume(volume);
        QCOMPARE(music.commands().size(), 1);
        QTEST(music.commands().first(), "command");
        QTEST(connector.soundVolume(), "volume");
    }

    void theVolumeIsAnnouncedBeforeItIsSentAndAlsoWhenEqual()
    {
        ScriptedMusicApplication music;
        MusicConnector connector(music, m_windowActivation);
        QStringList order;
        connect(&connector, &MusicConnector::soundVolumeChanged, this, [&](double volume) {
            order.append(QString::number(volume));
            order.append(music.commands());
        });
        connector.setVolume(40.0);
        QCOMPARE(order, QStringList(u"40"_s));
        connector.setVolume(40.0);
        QCOMPARE(order, QStringList({u"40"_s, u"40"_s, u"setSoundVolume 40"_s}));
    }

    void theVolumeIsKeptAlsoWhereMusicTakesNone()
    {
        ScriptedMusicApplication music;
        music.unansweredCommands = {u"setSoundVolume"_s};
        MusicConnector connector(music, m_windowActivation);
        connector.setVolume(40.0);
        QCOMPARE(connector.soundVolume(), 40.0);
        QCOMPARE(music.commands(), QStringList());
    }

    void changesOfTheVolumeStayWithin0And100_data()
    {
        QTest::addColumn<int>("before");
        QTest::addColumn<double>("delta");
        QTest::addColumn<double>("after");
        QTest::addColumn<QString>("command");
        QTest::newRow("up") << 50 << 4.0 << 54.0 << u"setSoundVolume 54"_s;
        QTest::newRow("by a fraction") << 50 << -0.25 << 49.75 << u"setSoundVolume 49"_s;
        QTest::newRow("to the top") << 98 << 4.0 << 100.0 << u"setSoundVolume 100"_s;
        QTest::newRow("to the bottom") << 2 << -4.0 << 0.0 << u"setSoundVolume 0"_s;
        QTest::newRow("without end") << 50 << std::numeric_limits<double>::infinity() << 100.0
                                     << u"setSoundVolume 100"_s;
    }
    void changesOfTheVolumeStayWithin0And100()
    {
        QFETCH(int, before);
        QFETCH(double, delta);
        ScriptedMusicApplication music;
        music.answers.soundVolume = before;
        MusicConnector connector(music, m_windowActivation);
        connector.adjustVolume(delta);
        QTEST(connector.soundVolume(), "after");
        QCOMPARE(music.commands().size(), 1);
        QTEST(music.commands().first(), "command");
    }

    void withMusicNotRunningTheVolumeIs0()
    {
        ScriptedMusicApplication music;
        music.answers.soundVolume = 50;
        MusicConnector connector(music, m_windowActivation);
        music.setRunning(false);
        ConnectorObserver observer(connector);
        connector.setVolume(55.7);
        QCOMPARE(observer.take(), QStringList(u"soundVolume 0"_s));
        connector.adjustVolume(4.0);
        QCOMPARE(observer.take(), QStringList(u"soundVolume 0"_s));
        QCOMPARE(music.commands(), QStringList());
    }

    void impossibleValuesAreFatal_data()
    {
        QTest::addColumn<QString>("message");
        const QString volume = u"The volume is not finite or beyond 64 bits"_s;
        QTest::newRow("inf") << volume;
        QTest::newRow("-inf") << volume;
        QTest::newRow("nan") << volume;
        QTest::newRow("9223372036854775808") << volume;
        QTest::newRow("-1e19") << volume;
        QTest::newRow("delta") << volume;
        QTest::newRow("repeat") << u"Impossible repeat mode"_s;
    }
    void impossibleValuesAreFatal()
    {
        QFETCH(QString, message);
        const auto lastWords = lastWordsOfAbortedRun(QString::fromLatin1(QTest::currentDataTag()));
        QVERIFY(lastWords);
        QVERIFY2(lastWords->contains(message), qPrintable(*lastWords));
    }
};

TUNEDECK_TEST(MusicConnectorCommandsTest, QGuiApplication, goThroughFatalCase)

#include "MusicConnectorCommandsTest.moc"
