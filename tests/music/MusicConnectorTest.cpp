// SPDX-License-Identifier: MIT
#include "music/MusicConnector.h"

#include "ConnectorObserver.h"
#include "platform/WindowActivation.h"
#include "support/ScriptedMusicApplication.h"
#include "support/StartWatch.h"
#include "support/abortedRun.h"
#include "support/finishBackgroundJobs.h"
#include "support/registerTest.h"

#include <QGuiApplication>
#include <QLocale>
#include <QProperty>
#include <QRegularExpression>
#include <QSignalSpy>
#include <QTest>

#include <cmath>
#include <limits>

using namespace tunedeck;
using namespace Qt::StringLiterals;

namespace {

const QVariant anyValue = 1;

MusicTrack soWhat()
{
    return {.name = u"So What"_s,
        .artist = u"Miles Davis"_s,
        .album = u"Kind of Blue"_s,
        .genre = u"Jazz"_s,
        .duration = 200.0};
}

ScriptedMusicApplication::Answers playingAnswers()
{
    return {.playerState = PlayerState::playing,
        .currentTrack = soWhat(),
        .playerPosition = 10.0,
        .soundVolume = 55,
        .shuffleEnabled = true,
        .songRepeat = SongRepeat::one};
}

QVariantMap localTrackInfo()
{
    return {{u"PersistentID"_s, 42}, {u"Player State"_s, u"Playing"_s}, {u"Total Time"_s, 200},
        {u"Location"_s, u"file:///music/so-what.flac"_s}};
}

QVariantMap streamedTrackInfo()
{
    return {{u"PersistentID"_s, 43}, {u"Player State"_s, u"Playing"_s}, {u"Total Time"_s, 200},
        {u"Store URL"_s, u"https://shop.example/so-what"_s}};
}

QVariantMap liveStreamInfo()
{
    return {{u"PersistentID"_s, 44}, {u"Player State"_s, u"Playing"_s},
        {u"Store URL"_s, u"itmss://radio.example/link?n=Apple%20Music%20Hits"_s}};
}

QVariantMap stoppedInfo()
{
    return {{u"Player State"_s, u"Stopped"_s}};
}

const QStringList zeroProgress = {u"trackProgress 0"_s, u"elapsed 0:00"_s, u"remaining 0:00"_s, u"total 0:00"_s};

MusicAirPlayDevice device(std::optional<FourCharCode> kind, std::optional<QString> name)
{
    return {.kind = kind, .name = std::move(name)};
}

constexpr FourCharCode airPlayDevice = fourCharCode("kAPD");

/// Says its state only once it has been asked for its playlists, which happens on a thread of its own.
class MusicThatIsSlowToSayItsState : public ScriptedMusicApplication {
public:
    bool wasAskedForPlaylistsFirst() const { return m_wasAskedForPlaylistsFirst.value_or(false); }

    [[nodiscard]] std::optional<FourCharCode> playerState() const override
    {
        if (!m_wasAskedForPlaylistsFirst) {
            m_wasAskedForPlaylistsFirst = QTest::qWaitFor([this] { return !backgroundReads().isEmpty(); });
        }
        return ScriptedMusicApplication::playerState();
    }

private:
    mutable std::optional<bool> m_wasAskedForPlaylistsFirst;
};

/// Runs the case that must end the program, in a process of its own.
void goThroughFatalCase(const QString &name)
{
    const WindowActivation windowActivation;
    ScriptedMusicApplication music;
    const bool atStart = name == u"start";
    if (atStart) {
        music.answers.playerState.reset();
    }
    MusicConnector connector(music, windowActivation);
    music.answers.playerState.reset();
    if (name == u"notification") {
        Q_EMIT music.playerInfo(liveStreamInfo());
    } else if (name == u"local track") {
        connector.setFeedType(FeedType::localTrack);
    } else if (name == u"streamed track") {
        connector.setFeedType(FeedType::streamedTrack);
    } else if (name == u"feed type") {
        connector.setFeedType(static_cast<FeedType>(5));
    }
}

} // namespace

class MusicConnectorTest : public QObject {
    Q_OBJECT

private:
    const WindowActivation m_windowActivation;

private Q_SLOTS:
    void init()
    {
        QTest::failOnWarning(QRegularExpression(u".*"_s));
        QLocale::setDefault(QLocale(QLocale::English, QLocale::UnitedStates));
    }

    // Start

    void withMusicNotRunningTheFeedIsStoppedAndNothingRuns()
    {
        ScriptedMusicApplication music;
        music.setRunning(false);
        const MusicConnector connector(music, m_windowActivation);

        QCOMPARE(connector.isMusicAppRunning(), false);
        QCOMPARE(connector.feedType(), FeedType::stopped);
        QCOMPARE(connector.currentState(), PlayerState::stopped);
        QCOMPARE(connector.currentTrack(), std::nullopt);
        QCOMPARE(connector.trackProgress(), 0.0);
        QCOMPARE(connector.elapsedFormattedTime(), u"0:00"_s);
        QCOMPARE(connector.remainingFormattedTime(), u"0:00"_s);
        QCOMPARE(connector.totalFormattedTime(), u"0:00"_s);
        QCOMPARE(connector.soundVolume(), 0.0);
        QCOMPARE(connector.shuffleEnabled(), false);
        QCOMPARE(connector.repeatMode(), RepeatMode::off);
        QCOMPARE(connector.playlistOptions(), QList<PlaylistOption>());
        QCOMPARE(connector.selectedPlaylist(), std::nullopt);
        QCOMPARE(connector.audioOutputNames(), std::nullopt);
        QVERIFY(!connector.isRefreshTrackTimerActive());
        QVERIFY(!connector.isProgressPollingTimerActive());
        QCOMPARE(music.calls(), QStringList());
        QCOMPARE(music.backgroundReads(), QStringList());
    }

    void aRunningMusicIsReadInOrderAndToldToPlayPauseTwice()
    {
        ScriptedMusicApplication music;
        music.answers = playingAnswers();
        const MusicConnector connector(music, m_windowActivation);

        QCOMPARE(music.calls(),
            QStringList({u"playerState"_s, u"currentTrack"_s, u"playpause"_s, u"playpause"_s, u"playerPosition"_s,
                u"currentTrack"_s, u"currentTrack"_s, u"soundVolume"_s, u"shuffleEnabled"_s, u"songRepeat"_s}));
        QCOMPARE(music.commands(), QStringList({u"playpause"_s, u"playpause"_s}));
        QCOMPARE(connector.isMusicAppRunning(), true);
        QCOMPARE(connector.currentState(), PlayerState::playing);
        QCOMPARE(connector.elapsedFormattedTime(), u"0:10"_s);
        QCOMPARE(connector.soundVolume(), 55.0);
        QCOMPARE(connector.shuffleEnabled(), true);
        QCOMPARE(connector.repeatMode(), RepeatMode::one);
    }

    void thePlaylistsAreOnTheirWayBeforeTheStateIsRead()
    {
        MusicThatIsSlowToSayItsState music;
        const MusicConnector connector(music, m_windowActivation);
        QVERIFY(music.wasAskedForPlaylistsFirst());
    }

    void theTrackAndTheTimersWaitForTheFirstNotification()
    {
        ScriptedMusicApplication music;
        music.answers = playingAnswers();
        const MusicConnector connector(music, m_windowActivation);
        QCOMPARE(connector.feedType(), FeedType::unknown);
        QCOMPARE(connector.currentTrack(), std::nullopt);
        QVERIFY(!connector.isRefreshTrackTimerActive());
        QVERIFY(!connector.isProgressPollingTimerActive());

        Q_EMIT music.playerInfo(localTrackInfo());
        QCOMPARE(connector.feedType(), FeedType::localTrack);
        QCOMPARE(connector.currentTrack(),
            MusicConnectorTrack(u"So What"_s, u"Miles Davis"_s, u"Kind of Blue"_s, 200.0, u"Jazz"_s));
        QVERIFY(connector.isProgressPollingTimerActive());
    }

    void startSendsPlayPauseOnlyWhereNoAnsweredFieldIsEmpty_data()
    {
        QTest::addColumn<std::optional<MusicTrack>>("track");
        QTest::addColumn<QStringList>("commands");
        const QStringList twice = {u"playpause"_s, u"playpause"_s};
        MusicTrack track = soWhat();
        track.name = QString();
        QTest::newRow("empty name") << std::optional(track) << QStringList();
        track = soWhat();
        track.artist = QString();
        QTest::newRow("empty artist") << std::optional(track) << QStringList();
        track = soWhat();
        track.album = QString();
        QTest::newRow("empty album") << std::optional(track) << QStringList();
        track = soWhat();
        track.album.reset();
        QTest::newRow("album not answered") << std::optional(track) << twice;
        QTest::newRow("nothing answered") << std::optional(MusicTrack()) << twice;
        QTest::newRow("no track") << std::optional<MusicTrack>() << QStringList();
    }
    void startSendsPlayPauseOnlyWhereNoAnsweredFieldIsEmpty()
    {
        QFETCH(std::optional<MusicTrack>, track);
        ScriptedMusicApplication music;
        music.answers = playingAnswers();
        music.answers.currentTrack = track;
        const MusicConnector connector(music, m_windowActivation);
        QTEST(music.commands(), "commands");
    }

    // Feed type and timers

    void theKeysPresentMakeTheFeedTypeAndTheTimers_data()
    {
        QTest::addColumn<QVariantMap>("userInfo");
        QTest::addColumn<FeedType>("feedType");
        QTest::addColumn<bool>("refreshesTrack");
        QTest::addColumn<bool>("pollsProgress");

        QTest::newRow("no user info") << QVariantMap() << FeedType::unknown << false << false;
        QTest::newRow("the player state alone")
            << QVariantMap{{u"Player State"_s, anyValue}} << FeedType::stopped << false << false;
        QTest::newRow("one entry, but not the player state")
            << QVariantMap{{u"Name"_s, anyValue}} << FeedType::liveStream << true << false;
        QTest::newRow("no total time") << QVariantMap{{u"Player State"_s, anyValue}, {u"Location"_s, anyValue}}
                                       << FeedType::liveStream << true << false;
        QTest::newRow("total time and location") << QVariantMap{{u"Total Time"_s, anyValue}, {u"Location"_s, anyValue}}
                                                 << FeedType::localTrack << false << true;
        QTest::newRow("location goes before store URL")
            << QVariantMap{{u"Total Time"_s, anyValue}, {u"Location"_s, anyValue}, {u"Store URL"_s, anyValue}}
            << FeedType::localTrack << false << true;
        QTest::newRow("total time and store URL")
            << QVariantMap{{u"Total Time"_s, anyValue}, {u"Store URL"_s, anyValue}} << FeedType::streamedTrack << true
            << true;
        QTest::newRow("total time alone")
            << QVariantMap{{u"Total Time"_s, anyValue}} << FeedType::unknown << false << false;
        QTest::newRow("keys without a value") << QVariantMap{{u"Total Time"_s, QVariant()}, {u"Location"_s, QVariant()}}
                                              << FeedType::localTrack << false << true;
    }
    void theKeysPresentMakeTheFeedTypeAndTheTimers()
    {
        QFETCH(QVariantMap, userInfo);
        ScriptedMusicApplication music;
        music.answers = playingAnswers();
        const MusicConnector connector(music, m_windowActivation);

        Q_EMIT music.playerInfo(userInfo);
        QTEST(connector.feedType(), "feedType");
        QTEST(connector.isRefreshTrackTimerActive(), "refreshesTrack");
        QTEST(connector.isProgressPollingTimerActive(), "pollsProgress");
    }

    void anyStateButPausedAndStoppedIsPlaying_data()
    {
        QTest::addColumn<FourCharCode>("state");
        QTest::addColumn<bool>("pollsProgress");
        QTest::newRow("playing") << fourCharCode("kPSP") << true;
        QTest::newRow("fast forwarding") << fourCharCode("kPSF") << true;
        QTest::newRow("rewinding") << fourCharCode("kPSR") << true;
        QTest::newRow("an unknown one") << fourCharCode("????") << true;
        QTest::newRow("paused") << fourCharCode("kPSp") << false;
        QTest::newRow("stopped") << fourCharCode("kPSS") << false;
    }
    void anyStateButPausedAndStoppedIsPlaying()
    {
        QFETCH(FourCharCode, state);
        ScriptedMusicApplication music;
        MusicConnector connector(music, m_windowActivation);
        music.answers.playerState = state;
        connector.setFeedType(FeedType::localTrack);
        QTEST(connector.isProgressPollingTimerActive(), "pollsProgress");
    }

    void aFeedTypeSetWhilePausedLeavesTheProgressTimerAsItIs_data()
    {
        QTest::addColumn<FeedType>("feedType");
        QTest::newRow("local track") << FeedType::localTrack;
        QTest::newRow("streamed track") << FeedType::streamedTrack;
    }
    void aFeedTypeSetWhilePausedLeavesTheProgressTimerAsItIs()
    {
        QFETCH(FeedType, feedType);
        ScriptedMusicApplication music;
        music.answers = playingAnswers();
        MusicConnector connector(music, m_windowActivation);

        music.answers.playerState = PlayerState::paused;
        connector.setFeedType(feedType);
        QVERIFY(!connector.isProgressPollingTimerActive());

        music.answers.playerState = PlayerState::playing;
        connector.setFeedType(feedType);
        music.answers.playerState = PlayerState::paused;
        connector.setFeedType(feedType);
        QVERIFY(connector.isProgressPollingTimerActive());
    }

    void aFeedTypeWithoutProgressStopsTheProgressTimer_data()
    {
        QTest::addColumn<FeedType>("feedType");
        QTest::addColumn<bool>("refreshesTrack");
        QTest::newRow("live stream") << FeedType::liveStream << true;
        QTest::newRow("stopped") << FeedType::stopped << false;
        QTest::newRow("unknown") << FeedType::unknown << false;
    }
    void aFeedTypeWithoutProgressStopsTheProgressTimer()
    {
        QFETCH(FeedType, feedType);
        ScriptedMusicApplication music;
        music.answers = playingAnswers();
        MusicConnector connector(music, m_windowActivation);
        connector.setFeedType(FeedType::streamedTrack);

        connector.setFeedType(feedType);
        QVERIFY(!connector.isProgressPollingTimerActive());
        QTEST(connector.isRefreshTrackTimerActive(), "refreshesTrack");
    }

    void aLocalTrackStopsTheTrackTimer()
    {
        ScriptedMusicApplication music;
        MusicConnector connector(music, m_windowActivation);
        connector.setFeedType(FeedType::liveStream);
        QVERIFY(connector.isRefreshTrackTimerActive());
        connector.setFeedType(FeedType::localTrack);
        QVERIFY(!connector.isRefreshTrackTimerActive());
    }

    void theSameFeedTypeAgainSchedulesItsTimerAnew()
    {
        ScriptedMusicApplication music;
        MusicConnector connector(music, m_windowActivation);
        connector.setFeedType(FeedType::liveStream);
        const StartWatch watch(*connector.findChild<QTimer *>(u"refreshTrackTimer"_s));
        QVERIFY(!watch.wasStarted());
        connector.setFeedType(FeedType::liveStream);
        QVERIFY(watch.wasStarted());
    }

    void theSameFeedTypeAgainSchedulesTheProgressTimerAgain_data()
    {
        QTest::addColumn<FeedType>("feedType");
        QTest::newRow("local track") << FeedType::localTrack;
        QTest::newRow("streamed track") << FeedType::streamedTrack;
    }
    void theSameFeedTypeAgainSchedulesTheProgressTimerAgain()
    {
        QFETCH(FeedType, feedType);
        ScriptedMusicApplication music;
        music.answers = playingAnswers();
        MusicConnector connector(music, m_windowActivation);
        auto *timer = connector.findChild<QTimer *>(u"progressPollingTimer"_s);
        connector.setFeedType(feedType);
        int startsAndStops = 0;
        const auto watch = timer->bindableActive().addNotifier([&startsAndStops] { ++startsAndStops; });
        connector.setFeedType(feedType);
        QVERIFY(startsAndStops > 0);
        QVERIFY(timer->isActive());
    }

    void theTrackTimerRefreshesTheTrackEvery1500Ms()
    {
        ScriptedMusicApplication music;
        music.answers = playingAnswers();
        const MusicConnector connector(music, m_windowActivation);
        Q_EMIT music.playerInfo(streamedTrackInfo());
        auto *timer = connector.findChild<QTimer *>(u"refreshTrackTimer"_s);
        QCOMPARE(timer->interval(), 1500);
        QVERIFY(!timer->isSingleShot());

        music.answers.currentTrack->name = u"Freddie Freeloader"_s;
        QVERIFY(QMetaObject::invokeMethod(timer, "timeout"));
        QCOMPARE(connector.currentTrack()->trackName, u"Freddie Freeloader"_s);
    }

    void nothingIsReadWhileNobodyLooks()
    {
        ScriptedMusicApplication music;
        music.answers = playingAnswers();
        MusicConnector connector(music, m_windowActivation);
        Q_EMIT music.playerInfo(streamedTrackInfo());
        QVERIFY(connector.isRefreshTrackTimerActive());
        QVERIFY(connector.isProgressPollingTimerActive());

        connector.setWatched(false);
        QVERIFY(!music.isWatched);
        QVERIFY(!connector.isRefreshTrackTimerActive());
        QVERIFY(!connector.isProgressPollingTimerActive());
        music.answers.currentTrack->name = u"Freddie Freeloader"_s;
        Q_EMIT music.playerInfo(streamedTrackInfo());
        QCOMPARE(connector.currentTrack()->trackName, u"Freddie Freeloader"_s);
        QVERIFY(!connector.isRefreshTrackTimerActive());
        QVERIFY(!connector.isProgressPollingTimerActive());

        music.answers.currentTrack->name = u"So What"_s;
        music.answers.playerPosition = 20.0;
        connector.setWatched(true);
        QVERIFY(music.isWatched);
        QVERIFY(connector.isRefreshTrackTimerActive());
        QVERIFY(connector.isProgressPollingTimerActive());
        QCOMPARE(connector.currentTrack()->trackName, u"So What"_s);
        QCOMPARE(connector.trackProgress(), 10.0);
    }

    void whoLooksAtAPausedMusicStartsNoTimer()
    {
        ScriptedMusicApplication music;
        music.answers = playingAnswers();
        music.answers.playerState = PlayerState::paused;
        MusicConnector connector(music, m_windowActivation);
        Q_EMIT music.playerInfo(localTrackInfo());
        connector.setWatched(false);
        connector.setWatched(true);
        QVERIFY(!connector.isProgressPollingTimerActive());
    }

    void theProgressTimerReadsThePositionEvery500Ms()
    {
        ScriptedMusicApplication music;
        music.answers = playingAnswers();
        const MusicConnector connector(music, m_windowActivation);
        Q_EMIT music.playerInfo(localTrackInfo());
        auto *timer = connector.findChild<QTimer *>(u"progressPollingTimer"_s);
        QCOMPARE(timer->interval(), 500);
        QVERIFY(!timer->isSingleShot());

        music.answers.playerPosition = 20.0;
        QVERIFY(QMetaObject::invokeMethod(timer, "timeout"));
        QCOMPARE(connector.trackProgress(), 10.0);
    }

    void thePublicStopsEndTheTimers()
    {
        ScriptedMusicApplication music;
        music.answers = playingAnswers();
        MusicConnector connector(music, m_windowActivation);
        connector.setFeedType(FeedType::streamedTrack);

        connector.stopProgressPollingTimer();
        QVERIFY(!connector.isProgressPollingTimerActive());
        QVERIFY(connector.isRefreshTrackTimerActive());
        connector.stopRefreshTrackTimer();
        QVERIFY(!connector.isRefreshTrackTimerActive());
    }

    void noTimerRunsWhileMusicIsPausedFromElsewhere_data()
    {
        QTest::addColumn<QVariantMap>("userInfo");
        QTest::newRow("local track") << localTrackInfo();
        QTest::newRow("streamed track") << streamedTrackInfo();
        QTest::newRow("live stream") << liveStreamInfo();
    }
    void noTimerRunsWhileMusicIsPausedFromElsewhere()
    {
        QFETCH(QVariantMap, userInfo);
        ScriptedMusicApplication music;
        music.answers = playingAnswers();
        const MusicConnector connector(music, m_windowActivation);
        Q_EMIT music.playerInfo(userInfo);
        QVERIFY(connector.isProgressPollingTimerActive() || connector.isRefreshTrackTimerActive());

        music.answers.playerState = PlayerState::paused;
        Q_EMIT music.playerInfo(userInfo);
        QVERIFY(!connector.isProgressPollingTimerActive());
        QVERIFY(!connector.isRefreshTrackTimerActive());

        music.answers.playerState = PlayerState::playing;
        Q_EMIT music.playerInfo(userInfo);
        QVERIFY(connector.isProgressPollingTimerActive() || connector.isRefreshTrackTimerActive());
    }

    void aFeedTypeIsAnnouncedWithItsSideEffectsAlsoWhenItIsTheSame()
    {
        ScriptedMusicApplication music;
        MusicConnector connector(music, m_windowActivation);
        ConnectorObserver observer(connector);

        const QStringList stopped = QStringList({u"feedType 4"_s, u"isMusicAppRunning true"_s}) + zeroProgress
            + QStringList(u"currentTrack none"_s);
        connector.setFeedType(FeedType::stopped);
        QCOMPARE(observer.take(), stopped);
        connector.setFeedType(FeedType::stopped);
        QCOMPARE(observer.take(), stopped);

        connector.setFeedType(FeedType::liveStream);
        QCOMPARE(observer.take(), QStringList({u"feedType 3"_s, u"isMusicAppRunning true"_s}));
    }

    // Notifications

    void aNotificationIsFollowedInOrder()
    {
        ScriptedMusicApplication music;
        music.answers = playingAnswers();
        MusicConnector connector(music, m_windowActivation);
        ConnectorObserver observer(connector);
        music.clearRecords();

        Q_EMIT music.playerInfo(localTrackInfo());
        const QStringList settings = {u"elapsed 0:10"_s, u"remaining -3:09"_s, u"total 3:20"_s, u"trackProgress 5"_s,
            u"soundVolume 55"_s, u"shuffleEnabled true"_s, u"repeatMode 1"_s};
        QCOMPARE(observer.take(),
            zeroProgress
                + QStringList(
                    {u"feedType 1"_s, u"isMusicAppRunning true"_s, u"delegate kPSP"_s, u"currentTrack So What"_s})
                + settings);
        QCOMPARE(music.calls(),
            QStringList({u"playerState"_s, u"playerState"_s, u"currentTrack"_s, u"currentTrack"_s, u"playerPosition"_s,
                u"currentTrack"_s, u"currentTrack"_s, u"soundVolume"_s, u"shuffleEnabled"_s, u"songRepeat"_s}));

        // The same again: all is announced but the track, which is the same.
        Q_EMIT music.playerInfo(localTrackInfo());
        QCOMPARE(observer.take(),
            QStringList({u"feedType 1"_s, u"isMusicAppRunning true"_s, u"delegate kPSP"_s}) + settings);
    }

    void aStoppedMusicIsNotRead()
    {
        ScriptedMusicApplication music;
        music.answers = playingAnswers();
        MusicConnector connector(music, m_windowActivation);
        Q_EMIT music.playerInfo(localTrackInfo());
        ConnectorObserver observer(connector);
        music.clearRecords();

        Q_EMIT music.playerInfo(stoppedInfo());
        QCOMPARE(observer.take(),
            zeroProgress + QStringList({u"feedType 4"_s, u"isMusicAppRunning true"_s}) + zeroProgress
                + QStringList({u"currentTrack none"_s, u"delegate kPSS"_s}));
        QCOMPARE(music.calls(), QStringList());
        QCOMPARE(connector.currentState(), PlayerState::stopped);
        QVERIFY(!connector.isRefreshTrackTimerActive());
        QVERIFY(!connector.isProgressPollingTimerActive());
    }

    void withoutADelegateNotificationsAreFollowedAllTheSame()
    {
        ScriptedMusicApplication music;
        const MusicConnector connector(music, m_windowActivation);
        music.answers.playerState = PlayerState::paused;
        Q_EMIT music.playerInfo(localTrackInfo());
        QCOMPARE(connector.currentState(), PlayerState::paused);
    }

    void onlyAnotherPersistentIdResetsTheProgress()
    {
        ScriptedMusicApplication music;
        MusicConnector connector(music, m_windowActivation);
        ConnectorObserver observer(connector);
        const auto isResetBy = [&](const QVariant &id) {
            QVariantMap userInfo = localTrackInfo();
            if (id.isValid()) {
                userInfo.insert(u"PersistentID"_s, id);
            } else {
                userInfo.remove(u"PersistentID"_s);
            }
            Q_EMIT music.playerInfo(userInfo);
            return observer.take().contains(u"trackProgress 0"_s);
        };

        QVERIFY(!isResetBy({}));
        QVERIFY(isResetBy(1));
        QVERIFY(!isResetBy(1));
        QVERIFY(!isResetBy(QVariant::fromValue<qulonglong>(1)));
        QVERIFY(isResetBy(2));
        QVERIFY(isResetBy({}));
        QVERIFY(!isResetBy({}));
        QVERIFY(!isResetBy(u"3"_s));
        QVERIFY(!isResetBy(3.0));
        QVERIFY(isResetBy(QVariant::fromValue<qlonglong>(9223372036854775807)));
    }

    // Track

    void whatTheTrackDoesNotAnswerComesFromTheNotification()
    {
        ScriptedMusicApplication music;
        MusicConnector connector(music, m_windowActivation);
        QVariantMap userInfo = localTrackInfo();
        userInfo.insert(u"Name"_s, u"Blue in Green"_s);
        userInfo.insert(u"Artist"_s, u"Bill Evans"_s);
        userInfo.insert(u"Album"_s, u"Portrait in Jazz"_s);

        Q_EMIT music.playerInfo(userInfo);
        QCOMPARE(connector.currentTrack(),
            MusicConnectorTrack(u"Blue in Green"_s, u"Bill Evans"_s, u"Portrait in Jazz"_s, 200.0, std::nullopt));

        music.answers.currentTrack = MusicTrack{.name = u"So What"_s, .genre = u"Jazz"_s};
        connector.refreshTrackInfo();
        QCOMPARE(connector.currentTrack(),
            MusicConnectorTrack(u"So What"_s, u"Bill Evans"_s, u"Portrait in Jazz"_s, 200.0, u"Jazz"_s));
    }

    void wrongTypesInANotificationAreAbsent()
    {
        ScriptedMusicApplication music;
        const MusicConnector connector(music, m_windowActivation);
        Q_EMIT music.playerInfo({{u"PersistentID"_s, u"x"_s}, {u"Name"_s, 1}, {u"Artist"_s, QVariantList{u"a"_s}},
            {u"Album"_s, QByteArray("b")}, {u"Total Time"_s, u"200"_s}, {u"Location"_s, 3}});
        QCOMPARE(connector.currentTrack(), MusicConnectorTrack({}, {}, {}, 0.0, {}));
    }

    void emptyArtistAndAlbumAreAbsentAndAnEmptyNameStays()
    {
        ScriptedMusicApplication music;
        const MusicConnector connector(music, m_windowActivation);
        music.answers.currentTrack = MusicTrack{.name = QString(), .artist = QString(), .album = QString()};
        QVariantMap userInfo = localTrackInfo();
        userInfo.insert(u"Artist"_s, u"not asked for where the track answers"_s);
        Q_EMIT music.playerInfo(userInfo);
        QCOMPARE(connector.currentTrack(), MusicConnectorTrack(QString(), {}, {}, 200.0, {}));
    }

    void theArtistOfAKnownStationIsItsLabel()
    {
        ScriptedMusicApplication music;
        MusicConnector connector(music, m_windowActivation);
        Q_EMIT music.playerInfo(liveStreamInfo());
        QCOMPARE(connector.currentTrack()->artistName, u"\uF8FFMusic"_s);

        music.answers.currentTrack = MusicTrack{.artist = QString()};
        connector.refreshTrackInfo();
        QCOMPARE(connector.currentTrack()->artistName, u"\uF8FFMusic"_s);

        music.answers.currentTrack = MusicTrack{.artist = u"Miles Davis"_s};
        connector.refreshTrackInfo();
        QCOMPARE(connector.currentTrack()->artistName, u"Miles Davis"_s);
    }

    void noOtherContentHasAStationLabel()
    {
        ScriptedMusicApplication music;
        const MusicConnector connector(music, m_windowActivation);
        QVariantMap userInfo = liveStreamInfo();
        userInfo.insert(u"Store URL"_s, u"https://radio.example/stream"_s);
        Q_EMIT music.playerInfo(userInfo);
        QCOMPARE(connector.feedType(), FeedType::liveStream);
        QCOMPARE(connector.currentTrack()->artistName, std::nullopt);

        userInfo = liveStreamInfo();
        userInfo.insert(u"Store URL"_s, liveStreamInfo().value(u"Store URL"_s).toString().toUtf8());
        Q_EMIT music.playerInfo(userInfo);
        QCOMPARE(connector.currentTrack()->artistName, std::nullopt);

        userInfo = liveStreamInfo();
        userInfo.insert(u"Total Time"_s, 200);
        Q_EMIT music.playerInfo(userInfo);
        QCOMPARE(connector.feedType(), FeedType::streamedTrack);
        QCOMPARE(connector.currentTrack()->artistName, std::nullopt);
    }

    void theTrackIsReplacedOnlyWhenAFieldChanged()
    {
        ScriptedMusicApplication music;
        music.answers = playingAnswers();
        MusicConnector connector(music, m_windowActivation);
        Q_EMIT music.playerInfo(localTrackInfo());
        const QSignalSpy changed(&connector, &MusicConnector::currentTrackChanged);

        connector.refreshTrackInfo();
        QCOMPARE(changed.size(), 0);
        music.answers.currentTrack->genre = u"Modal jazz"_s;
        connector.refreshTrackInfo();
        QCOMPARE(changed.size(), 1);
        QCOMPARE(connector.currentTrack()->genre, u"Modal jazz"_s);
        music.answers.currentTrack->duration = 201.0;
        connector.refreshTrackInfo();
        QCOMPARE(changed.size(), 2);
    }

    void contentOfUnknownKindHasNoTrack()
    {
        ScriptedMusicApplication music;
        music.answers = playingAnswers();
        MusicConnector connector(music, m_windowActivation);
        Q_EMIT music.playerInfo(localTrackInfo());
        Q_EMIT music.playerInfo({{u"Total Time"_s, 200}});
        QCOMPARE(connector.currentTrack(), std::nullopt);

        const QSignalSpy changed(&connector, &MusicConnector::currentTrackChanged);
        connector.refreshTrackInfo();
        QCOMPARE(changed.size(), 1);
    }

    void aMusicThatDoesNotRunLeavesTheTrackAsItIs()
    {
        ScriptedMusicApplication music;
        music.answers = playingAnswers();
        MusicConnector connector(music, m_windowActivation);
        Q_EMIT music.playerInfo(localTrackInfo());
        music.setRunning(false);
        const QSignalSpy changed(&connector, &MusicConnector::currentTrackChanged);

        connector.refreshTrackInfo();
        QCOMPARE(changed.size(), 0);
        QCOMPARE(connector.currentTrack()->trackName, u"So What"_s);
    }

    // Duration, position and times

    void theDurationIsMusicsElseTheNotifiedOne_data()
    {
        constexpr double infinity = std::numeric_limits<double>::infinity();
        QTest::addColumn<std::optional<double>>("musics");
        QTest::addColumn<QVariant>("notified");
        QTest::addColumn<double>("duration");
        QTest::newRow("Music's") << std::optional(180.5) << QVariant(200) << 180.5;
        QTest::newRow("Music's is 0") << std::optional(0.0) << QVariant(200) << 200.0;
        QTest::newRow("Music has none") << std::optional<double>() << QVariant(200.25) << 200.25;
        QTest::newRow("no conversion of units") << std::optional<double>() << QVariant(200000) << 200000.0;
        QTest::newRow("neither") << std::optional<double>() << QVariant() << 0.0;
        QTest::newRow("a text") << std::optional<double>() << QVariant(u"200"_s) << 0.0;
        QTest::newRow("the longest") << std::optional<double>() << QVariant(1e9) << 1e9;
        QTest::newRow("beyond any length") << std::optional<double>() << QVariant(1e300) << 0.0;
        QTest::newRow("beyond any length, negative") << std::optional<double>() << QVariant(-1e300) << 0.0;
        QTest::newRow("infinite") << std::optional<double>() << QVariant(infinity) << 0.0;
        QTest::newRow("not a number") << std::optional<double>() << QVariant(std::nan("")) << 0.0;
    }
    void theDurationIsMusicsElseTheNotifiedOne()
    {
        QFETCH(std::optional<double>, musics);
        QFETCH(QVariant, notified);
        ScriptedMusicApplication music;
        music.answers = playingAnswers();
        music.answers.currentTrack->duration = musics;
        const MusicConnector connector(music, m_windowActivation);
        QVariantMap userInfo = localTrackInfo();
        userInfo.insert(u"Total Time"_s, notified);
        Q_EMIT music.playerInfo(userInfo);

        QTEST(connector.duration(), "duration");
        QTEST(connector.currentTrack()->duration.value(), "duration");
    }

    void theDurationIsZeroWhileMusicDoesNotRun()
    {
        ScriptedMusicApplication music;
        const MusicConnector connector(music, m_windowActivation);
        Q_EMIT music.playerInfo(localTrackInfo());
        QCOMPARE(connector.duration(), 200.0);
        music.setRunning(false);
        QCOMPARE(connector.duration(), 0.0);
    }

    void positionAndDurationMakeTheTimes_data()
    {
        QTest::addColumn<double>("position");
        QTest::addColumn<double>("duration");
        QTest::addColumn<QString>("elapsed");
        QTest::addColumn<QString>("remaining");
        QTest::addColumn<QString>("total");
        QTest::addColumn<double>("progress");
        QTest::newRow("start") << 0.0 << 200.0 << u"0:00"_s << u"-3:19"_s << u"3:20"_s << 0.0;
        QTest::newRow("middle") << 10.0 << 200.0 << u"0:10"_s << u"-3:09"_s << u"3:20"_s << 5.0;
        QTest::newRow("a third of a second ahead") << 9.7 << 200.0 << u"0:10"_s << u"-3:09"_s << u"3:20"_s << 4.85;
        QTest::newRow("nothing remains") << 199.5 << 200.0 << u"3:19"_s << u"0:00"_s << u"3:20"_s << 99.75;
        QTest::newRow("past the end") << 201.0 << 200.0 << u"3:21"_s << u"-0:-1"_s << u"3:20"_s << 100.5;
        QTest::newRow("hours") << 3600.0 << 7200.0 << u"1:00:00"_s << u"-59:59"_s << u"2:00:00"_s << 50.0;
    }
    void positionAndDurationMakeTheTimes()
    {
        QFETCH(double, position);
        QFETCH(double, duration);
        ScriptedMusicApplication music;
        MusicConnector connector(music, m_windowActivation);
        music.answers.playerPosition = position;
        music.answers.currentTrack = MusicTrack{.duration = duration};
        connector.updatePlayerProgressInfo();
        QTEST(connector.elapsedFormattedTime(), "elapsed");
        QTEST(connector.remainingFormattedTime(), "remaining");
        QTEST(connector.totalFormattedTime(), "total");
        QTEST(connector.trackProgress(), "progress");
    }

    void theTimesAreAThirdOfASecondAhead()
    {
        ScriptedMusicApplication music;
        MusicConnector connector(music, m_windowActivation);
        music.answers.currentTrack = MusicTrack{.duration = 200.0};
        music.answers.playerPosition = 9.6665;
        connector.updatePlayerProgressInfo();
        QCOMPARE(connector.elapsedFormattedTime(), u"0:09"_s);
        QCOMPARE(connector.remainingFormattedTime(), u"-3:10"_s);
        music.answers.playerPosition = 9.6675;
        connector.updatePlayerProgressInfo();
        QCOMPARE(connector.elapsedFormattedTime(), u"0:10"_s);
        QCOMPARE(connector.remainingFormattedTime(), u"-3:09"_s);
        QCOMPARE(connector.trackProgress(), 9.6675 / 200 * 100);
    }

    void aZeroDurationIsPassedOnAsItIs()
    {
        ScriptedMusicApplication music;
        MusicConnector connector(music, m_windowActivation);
        music.answers.playerPosition = 0.0;
        connector.updatePlayerProgressInfo();
        QVERIFY(std::isnan(connector.trackProgress()));

        music.answers.playerPosition = 10.0;
        connector.updatePlayerProgressInfo();
        QVERIFY(std::isinf(connector.trackProgress()));
        QCOMPARE(connector.elapsedFormattedTime(), u"0:10"_s);
        QCOMPARE(connector.remainingFormattedTime(), u"-0:-10"_s);
        QCOMPARE(connector.totalFormattedTime(), u"0:00"_s);
    }

    void withoutAPositionNothingIsAnnounced()
    {
        ScriptedMusicApplication music;
        music.answers = playingAnswers();
        MusicConnector connector(music, m_windowActivation);
        ConnectorObserver observer(connector);

        connector.updatePlayerProgressInfo();
        QCOMPARE(observer.take(),
            QStringList({u"elapsed 0:10"_s, u"remaining -3:09"_s, u"total 3:20"_s, u"trackProgress 5"_s}));
        music.answers.playerPosition.reset();
        connector.updatePlayerProgressInfo();
        QCOMPARE(observer.take(), QStringList());
        music.answers.playerPosition = 10.0;
        music.setRunning(false);
        connector.updatePlayerProgressInfo();
        QCOMPARE(observer.take(), QStringList());
        QCOMPARE(connector.elapsedFormattedTime(), u"0:10"_s);
    }

    // Playback settings

    void playbackSettingsThatMusicDoesNotAnswerAreNeutral()
    {
        ScriptedMusicApplication music;
        music.answers = playingAnswers();
        MusicConnector connector(music, m_windowActivation);
        music.answers = {};
        ConnectorObserver observer(connector);
        connector.refreshPlaybackSettings();
        QCOMPARE(observer.take(), QStringList({u"soundVolume 0"_s, u"shuffleEnabled false"_s, u"repeatMode 0"_s}));
    }

    void aMusicThatDoesNotRunLeavesTheVolumeAsItIs()
    {
        ScriptedMusicApplication music;
        music.answers = playingAnswers();
        MusicConnector connector(music, m_windowActivation);
        music.setRunning(false);
        ConnectorObserver observer(connector);
        connector.refreshPlaybackSettings();
        QCOMPARE(observer.take(), QStringList({u"shuffleEnabled false"_s, u"repeatMode 0"_s}));
        QCOMPARE(connector.soundVolume(), 55.0);
    }

    void musicsRepeatIsConverted_data()
    {
        QTest::addColumn<FourCharCode>("songRepeat");
        QTest::addColumn<RepeatMode>("repeatMode");
        QTest::newRow("off") << fourCharCode("kRpO") << RepeatMode::off;
        QTest::newRow("one") << fourCharCode("kRp1") << RepeatMode::one;
        QTest::newRow("all") << fourCharCode("kAll") << RepeatMode::all;
        QTest::newRow("any other") << fourCharCode("kRpX") << RepeatMode::off;
    }
    void musicsRepeatIsConverted()
    {
        QFETCH(FourCharCode, songRepeat);
        ScriptedMusicApplication music;
        MusicConnector connector(music, m_windowActivation);
        music.answers.songRepeat = songRepeat;
        connector.refreshPlaybackSettings();
        QTEST(connector.repeatMode(), "repeatMode");
    }

    void aChangedSettingAndAKeyWindowReadThePlaybackSettingsAlone()
    {
        WindowActivation windowActivation;
        ScriptedMusicApplication music;
        MusicConnector connector(music, windowActivation);
        Q_EMIT music.playerInfo(localTrackInfo());
        music.answers = playingAnswers();
        ConnectorObserver observer(connector);
        const QStringList settings = {u"elapsed 0:10"_s, u"remaining -3:09"_s, u"total 3:20"_s, u"trackProgress 5"_s,
            u"soundVolume 55"_s, u"shuffleEnabled true"_s, u"repeatMode 1"_s};

        Q_EMIT music.playbackSettingsDidChange();
        QCOMPARE(observer.take(), settings);
        Q_EMIT windowActivation.anyWindowDidBecomeKey();
        QCOMPARE(observer.take(), settings);
        QVERIFY(!connector.isProgressPollingTimerActive());
    }

    // Launch and termination

    void aLaunchedMusicIsReadButForItsTrack()
    {
        ScriptedMusicApplication music;
        music.setRunning(false);
        music.answers = playingAnswers();
        music.answerInBackground({.playlistIds = QVariantList{1}, .playlistNames = QVariantList{u"A"_s}});
        MusicConnector connector(music, m_windowActivation);
        ConnectorObserver observer(connector);

        music.launch();
        QCOMPARE(observer.take(),
            QStringList({u"isMusicAppRunning true"_s, u"elapsed 0:10"_s, u"remaining -3:09"_s, u"total 3:20"_s,
                u"trackProgress 5"_s, u"soundVolume 55"_s, u"shuffleEnabled true"_s, u"repeatMode 1"_s}));
        QCOMPARE(connector.currentTrack(), std::nullopt);
        QCOMPARE(music.commands(), QStringList());
        QTRY_COMPARE(connector.playlistOptions(), QList<PlaylistOption>({{1, u"A"_s}}));

        // A list that has been loaded already stays.
        music.clearRecords();
        Q_EMIT music.didLaunch();
        QCOMPARE(connector.playlistOptions().size(), 1);
        QVERIFY(finishBackgroundJobs(connector));
        QCOMPARE(music.backgroundReads(), QStringList());
    }

    void aTerminatedMusicLeavesNothingBehind()
    {
        ScriptedMusicApplication music;
        music.answers = playingAnswers();
        music.answerInBackground({.currentPlaylist = MusicPlaylist{.id = 1, .name = {}},
            .playlistIds = QVariantList{1},
            .playlistNames = QVariantList{u"A"_s},
            .currentAirPlayDevices = QList{device(airPlayDevice, u"Kitchen"_s)}});
        MusicConnector connector(music, m_windowActivation);
        Q_EMIT music.playerInfo(streamedTrackInfo());
        QTRY_VERIFY(connector.selectedPlaylist() && connector.audioOutputNames());
        ConnectorObserver observer(connector);

        music.quit();
        const QStringList rest = {u"selectedPlaylist none"_s, u"playlistOptions []"_s, u"soundVolume 0"_s,
            u"shuffleEnabled false"_s, u"repeatMode 0"_s, u"audioOutputNames none"_s, u"currentTrack none"_s,
            u"delegate kPSS"_s, u"feedType 0"_s, u"isMusicAppRunning false"_s};
        // The progress is reset twice, once because the persistent id is gone.
        QCOMPARE(observer.take(), QStringList(u"isMusicAppRunning false"_s) + zeroProgress + zeroProgress + rest);
        QCOMPARE(connector.currentState(), PlayerState::stopped);
        QCOMPARE(connector.feedType(), FeedType::unknown);
        QVERIFY(!connector.isRefreshTrackTimerActive());
        QVERIFY(!connector.isProgressPollingTimerActive());

        Q_EMIT music.didTerminate();
        QCOMPARE(observer.take(), QStringList(u"isMusicAppRunning false"_s) + zeroProgress + rest);
    }

    void theNotificationOfAMusicThatQuitIsForgotten()
    {
        ScriptedMusicApplication music;
        MusicConnector connector(music, m_windowActivation);
        QVariantMap userInfo = localTrackInfo();
        userInfo.insert(u"Name"_s, u"So What"_s);
        Q_EMIT music.playerInfo(userInfo);
        QCOMPARE(connector.currentTrack()->trackName, u"So What"_s);

        music.quit();
        music.launch();
        connector.setFeedType(FeedType::localTrack);
        connector.refreshTrackInfo();
        QCOMPARE(connector.currentTrack(), MusicConnectorTrack({}, {}, {}, 0.0, {}));
    }

    // Audio outputs

    void theOutputsOtherThanTheComputerAreNamed_data()
    {
        QTest::addColumn<std::optional<QList<MusicAirPlayDevice>>>("devices");
        QTest::addColumn<QString>("names");
        const auto row = [](const char *name, const QList<MusicAirPlayDevice> &devices) -> QTestData & {
            return QTest::newRow(name) << std::optional(devices);
        };
        const auto kitchen = device(airPlayDevice, u"Kitchen"_s);
        const auto bath = device(airPlayDevice, u"Bath"_s);
        row("one", {kitchen}) << u"Kitchen"_s;
        row("in Music's order", {kitchen, bath}) << u"Kitchen and Bath"_s;
        row("three", {kitchen, bath, kitchen}) << u"Kitchen, Bath, and Kitchen"_s;
        row("unknown and computer are skipped",
            {device(fourCharCode("kAPU"), u"U"_s), kitchen, device(fourCharCode("kAPC"), u"C"_s)})
            << u"Kitchen"_s;
        row("kind not answered", {device({}, u"Attic"_s)}) << u"Attic"_s;
        row("name not answered", {device(airPlayDevice, {}), bath}) << u"Bath"_s;
    }
    void theOutputsOtherThanTheComputerAreNamed()
    {
        QFETCH(std::optional<QList<MusicAirPlayDevice>>, devices);
        QFETCH(QString, names);
        ScriptedMusicApplication music;
        music.answerInBackground({.currentAirPlayDevices = devices});
        const MusicConnector connector(music, m_windowActivation);
        Q_EMIT music.playerInfo(localTrackInfo());
        QCOMPARE(connector.audioOutputNames(), std::nullopt);
        QTRY_COMPARE(connector.audioOutputNames(), std::optional(names));
    }

    void outputNamesAreAnnouncedOnlyWhenTheirTextChanges()
    {
        ScriptedMusicApplication music;
        music.answerInBackground({.currentAirPlayDevices = QList{device(airPlayDevice, u"Kitchen"_s)}});
        MusicConnector connector(music, m_windowActivation);
        const QSignalSpy changed(&connector, &MusicConnector::audioOutputNamesChanged);
        Q_EMIT music.playerInfo(localTrackInfo());
        QTRY_COMPARE(changed.size(), 1);

        music.clearRecords();
        connector.refreshTrackInfo();
        QTRY_COMPARE(music.backgroundReads(), QStringList(u"currentAirPlayDevices"_s));
        music.answerInBackground({});
        connector.refreshTrackInfo();
        QTRY_COMPARE(connector.audioOutputNames(), std::nullopt);
        QCOMPARE(changed.size(), 2);
    }

    void outputNamesAreReadOneAtATimeAndOnceMoreWhenAskedMeanwhile()
    {
        ScriptedMusicApplication music;
        MusicConnector connector(music, m_windowActivation);
        QTRY_COMPARE(music.backgroundReads(), QStringList({u"currentPlaylist"_s, u"playlistIds"_s}));
        music.clearRecords();
        connector.setFeedType(FeedType::localTrack);
        music.holdBackground();
        connector.refreshTrackInfo();
        QTRY_COMPARE(music.backgroundReads().size(), 1);
        connector.refreshTrackInfo();
        connector.refreshTrackInfo();
        connector.refreshTrackInfo();
        QCoreApplication::processEvents();
        QCOMPARE(music.backgroundReads().size(), 1);

        music.releaseBackground();
        QTRY_COMPARE(music.backgroundReads().size(), 2);
        QVERIFY(finishBackgroundJobs(connector));
        QCOMPARE(music.backgroundReads().size(), 2);
    }

    void outputNamesReadBeforeMusicQuitAreDropped()
    {
        ScriptedMusicApplication music;
        music.answerInBackground({.currentAirPlayDevices = QList{device(airPlayDevice, u"Kitchen"_s)}});
        MusicConnector connector(music, m_windowActivation);
        connector.setFeedType(FeedType::localTrack);
        music.holdBackground();
        connector.refreshTrackInfo();
        QTRY_VERIFY(music.backgroundReads().contains(u"currentAirPlayDevices"_s));

        music.quit();
        music.setRunning(true);
        music.releaseBackground();
        QVERIFY(finishBackgroundJobs(connector));
        QCOMPARE(connector.audioOutputNames(), std::nullopt);

        connector.setFeedType(FeedType::localTrack);
        connector.refreshTrackInfo();
        QTRY_COMPARE(connector.audioOutputNames(), u"Kitchen"_s);
    }

    // Programming errors

    void aMusicThatDoesNotAnswerItsStateIsFatalWhereItIsRequired_data()
    {
        QTest::addColumn<QString>("message");
        const QString noState = u"Music does not answer playerState"_s;
        QTest::newRow("start") << noState;
        QTest::newRow("notification") << noState;
        QTest::newRow("local track") << noState;
        QTest::newRow("streamed track") << noState;
        QTest::newRow("feed type") << u"Impossible feed type"_s;
    }
    void aMusicThatDoesNotAnswerItsStateIsFatalWhereItIsRequired()
    {
        QFETCH(QString, message);
        const auto lastWords = lastWordsOfAbortedRun(QString::fromLatin1(QTest::currentDataTag()));
        QVERIFY(lastWords);
        QVERIFY2(lastWords->contains(message), qPrintable(*lastWords));
    }

    void elsewhereTheStateIsNotRequired()
    {
        ScriptedMusicApplication music;
        MusicConnector connector(music, m_windowActivation);
        music.answers.playerState.reset();
        connector.setFeedType(FeedType::liveStream);
        connector.stopProgressPollingIfIdle();
        connector.refreshPlaybackSettings();
        Q_EMIT music.playerInfo(stoppedInfo());
        QCOMPARE(connector.feedType(), FeedType::stopped);
    }
};

TUNEDECK_TEST(MusicConnectorTest, QGuiApplication, goThroughFatalCase)

#include "MusicConnectorTest.moc"
