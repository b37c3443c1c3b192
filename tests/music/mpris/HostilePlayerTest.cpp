// SPDX-License-Identifier: MIT
#include "DemoPlayerProcess.h"
#include "MusicAtRest.h"
#include "music/MusicConnector.h"
#include "music/mpris/MprisMusicApplication.h"
#include "platform/ApplicationLauncher.h"
#include "platform/UserDefaults.h"
#include "platform/WindowActivation.h"
#include "support/PrivateBus.h"
#include "support/TurnWatch.h"
#include "support/elapse.h"
#include "support/registerTest.h"

#include <QGuiApplication>
#include <QSignalSpy>
#include <QTemporaryDir>
#include <QTest>

#include <cmath>

using namespace Qt::StringLiterals;

namespace tunedeck {

namespace {

const QStringList kinds{u"string"_s, u"number-string"_s, u"int"_s, u"uint"_s, u"int64"_s, u"uint64"_s, u"double"_s,
    u"nan"_s, u"inf"_s, u"negative"_s, u"zero"_s, u"int64max"_s, u"int64min"_s, u"uint64max"_s, u"bool"_s, u"empty"_s,
    u"huge"_s, u"control"_s, u"array"_s, u"int-array"_s, u"dict"_s, u"path"_s, u"bytes"_s, u"nested"_s, u"struct"_s};

const QStringList keys{u"PlaybackStatus"_s, u"LoopStatus"_s, u"Rate"_s, u"Shuffle"_s, u"Metadata"_s, u"Volume"_s,
    u"Position"_s, u"MinimumRate"_s, u"MaximumRate"_s, u"CanGoNext"_s, u"CanGoPrevious"_s, u"CanPlay"_s, u"CanPause"_s,
    u"CanSeek"_s, u"CanControl"_s, u"Identity"_s, u"DesktopEntry"_s, u"mpris:trackid"_s, u"mpris:length"_s,
    u"mpris:artUrl"_s, u"xesam:title"_s, u"xesam:artist"_s, u"xesam:album"_s, u"xesam:genre"_s, u"xesam:url"_s,
    u"kde:pid"_s, u"vlc:nowplaying"_s, u"made:up"_s};

bool isClean(const std::optional<QString> &text)
{
    const QString shown = text.value_or(QString());
    return shown.size() <= 1'000 && std::ranges::none_of(shown, [](QChar character) {
        return character.category() == QChar::Other_Control || character.category() == QChar::Separator_Line
            || character.category() == QChar::Separator_Paragraph;
    });
}

} // namespace

/// A player may send anything, in any type: it must not harm the program, and the program must show clean text only.
class HostilePlayerTest : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void init();
    void cleanup();

    void anyValueOfAnyPropertyGivesCleanText_data();
    void anyValueOfAnyPropertyGivesCleanText();
    void aPlayerThatIsWrongAllOverIsSurvivedFromTheStart_data();
    void aPlayerThatIsWrongAllOverIsSurvivedFromTheStart();
    void aPlayerThatListsNoPropertyIsNeverAskedForOne();
    void aFloodOfSignalsLeavesTheEventLoopResponsive();

private:
    void startFollowing(const QStringList &arguments);
    void checkAll() const;
    [[nodiscard]] bool comesToRest() const { return m_rest.isReached(*m_music, m_musicConnection); }

    std::unique_ptr<PrivateBus> m_bus;
    std::unique_ptr<QTemporaryDir> m_folder;
    std::unique_ptr<UserDefaults> m_defaults;
    ApplicationLauncher m_launcher;
    WindowActivation m_windowActivation;
    std::unique_ptr<DemoPlayerProcess> m_player;
    MusicAtRest m_rest;
    QDBusConnection m_musicConnection{u"none"_s};
    std::unique_ptr<MprisMusicApplication> m_music;
    std::unique_ptr<MusicConnector> m_connector;
};

void HostilePlayerTest::init()
{
    QTest::failOnWarning(QRegularExpression(u".*"_s));
    m_bus = std::make_unique<PrivateBus>();
    QVERIFY(m_bus->isRunning());
    m_folder = std::make_unique<QTemporaryDir>();
    m_defaults = std::make_unique<UserDefaults>(m_folder->filePath(u"settings.conf"_s));
}

void HostilePlayerTest::cleanup()
{
    m_connector.reset();
    m_music.reset();
    m_player.reset();
    m_defaults.reset();
    m_bus.reset();
    m_musicConnection = QDBusConnection(u"none"_s);
    QDBusConnection::disconnectFromBus(u"player"_s);
    QDBusConnection::disconnectFromBus(u"music"_s);
}

void HostilePlayerTest::startFollowing(const QStringList &arguments)
{
    m_player = std::make_unique<DemoPlayerProcess>(*m_bus, m_bus->connect(u"player"_s), arguments);
    QVERIFY(m_player->isReady());
    m_musicConnection = m_bus->connect(u"music"_s);
    m_music = std::make_unique<MprisMusicApplication>(m_musicConnection, *m_defaults, m_launcher, m_rest.clock());
    QTRY_VERIFY(m_music->isReady());
    m_connector = std::make_unique<MusicConnector>(*m_music, m_windowActivation);
}

void HostilePlayerTest::checkAll() const
{
    if (const auto &track = m_connector->currentTrack()) {
        QVERIFY(isClean(track->trackName));
        QVERIFY(isClean(track->artistName));
        QVERIFY(isClean(track->albumName));
        QVERIFY(isClean(track->genre));
        QVERIFY(!track->duration || (std::isfinite(*track->duration) && *track->duration >= 0));
        QVERIFY(track->duration.value_or(0) <= 30.0 * 24 * 60 * 60);
    }
    const double position = m_music->playerPosition().value_or(0);
    QVERIFY(std::isfinite(position) && position >= 0 && position <= 1e9);
    QVERIFY(m_connector->soundVolume() >= 0 && m_connector->soundVolume() <= 100);
    QVERIFY(isClean(m_connector->elapsedFormattedTime()));
    QVERIFY(isClean(m_connector->remainingFormattedTime()));
    QVERIFY(m_connector->elapsedFormattedTime().size() < 20);
}

void HostilePlayerTest::anyValueOfAnyPropertyGivesCleanText_data()
{
    QTest::addColumn<QString>("key");
    for (const QString &key : keys) {
        QTest::newRow(qPrintable(key)) << key;
    }
}

void HostilePlayerTest::anyValueOfAnyPropertyGivesCleanText()
{
    QFETCH(const QString, key);
    startFollowing({u"--play"_s});
    for (const QString &kind : kinds) {
        const QString line = u"wrong %1 %2"_s.arg(key, kind);
        QVERIFY2(m_player->tell(line), qPrintable(line));
        QVERIFY2(comesToRest(), qPrintable(line));
        if (m_music->isRunning()) {
            m_connector->refreshPlayerState();
        }
        checkAll();
    }
    QVERIFY(m_player->tell(u"right all"_s));
    QVERIFY(m_player->tell(u"track 1"_s));
    QTRY_COMPARE(m_connector->currentTrack()->duration, 135.0);
    QTRY_COMPARE(m_connector->feedType(), FeedType::localTrack);
}

void HostilePlayerTest::aPlayerThatIsWrongAllOverIsSurvivedFromTheStart_data()
{
    QTest::addColumn<QString>("kind");
    for (const QString &kind : kinds) {
        QTest::newRow(qPrintable(kind)) << kind;
    }
}

void HostilePlayerTest::aPlayerThatIsWrongAllOverIsSurvivedFromTheStart()
{
    QFETCH(const QString, kind);
    QStringList arguments{u"--play"_s};
    // More huge values would exceed the size of a message on the bus.
    const QStringList huge{u"Identity"_s, u"xesam:title"_s, u"xesam:artist"_s, u"xesam:url"_s, u"PlaybackStatus"_s};
    for (const QString &key : kind == u"huge" ? huge : keys) {
        arguments << u"--do"_s << u"wrong %1 %2"_s.arg(key, kind);
    }
    startFollowing(arguments);
    QVERIFY(comesToRest());
    checkAll();
    // Every command may now be refused, but none may do harm.
    m_music->playpause();
    m_music->nextTrack();
    m_music->backTrack();
    m_music->setPlayerPosition(10);
    m_music->setSoundVolume(50);
    m_music->setShuffleEnabled(true);
    m_music->setSongRepeat(SongRepeat::one);
    m_music->fastForward();
    QTRY_VERIFY(!MusicAtRest::hasUnansweredCall(*m_music));
    m_music->resume();
    checkAll();
    QVERIFY(m_player->tell(u"right all"_s));
    QVERIFY(m_player->tell(u"track 1"_s));
    QTRY_COMPARE(m_music->isRunning(), true);
    QTRY_VERIFY(m_music->currentTrack() && m_music->currentTrack()->duration == 135.0);
}

void HostilePlayerTest::aPlayerThatListsNoPropertyIsNeverAskedForOne()
{
    QStringList arguments{u"--play"_s};
    for (const QString &key : {u"Position"_s, u"Shuffle"_s, u"Volume"_s, u"LoopStatus"_s}) {
        arguments << u"--do"_s << u"absent "_s + key << u"--do"_s << u"die-on-get "_s + key;
    }
    startFollowing(arguments);
    QVERIFY(m_music->isRunning());
    QCOMPARE(m_music->playerPosition(), std::nullopt);
    QCOMPARE(m_music->soundVolume(), std::nullopt);
    QCOMPARE(m_music->shuffleEnabled(), std::nullopt);
    QCOMPARE(m_music->songRepeat(), std::nullopt);
    m_music->refreshPlayer();
    QVERIFY(m_player->tell(u"next"_s));
    QVERIFY(elapse(*m_music->findChild<QTimer *>(u"sampleTimer"_s)));
    QVERIFY(comesToRest());
    QVERIFY(m_music->isRunning());
    QVERIFY(m_player->takeCalls().filter(u"Get "_s).isEmpty());
}

void HostilePlayerTest::aFloodOfSignalsLeavesTheEventLoopResponsive()
{
    startFollowing({u"--play"_s});
    QTRY_VERIFY(m_connector->currentTrack().has_value());
    QSignalSpy changed(m_connector.get(), &MusicConnector::currentTrackChanged);
    TurnWatch turns;
    QVERIFY(m_player->tell(u"flood 20000"_s));
    QTRY_VERIFY_WITH_TIMEOUT(m_player->tell(u"track 1"_s) && m_connector->currentTrack()->duration == 135.0, 20'000);
    const qint64 longestTurn = turns.longest();
    qInfo("longest turn %lld ms (with sanitizers), %lld track changes shown of 20000 announced", longestTurn,
        qint64(changed.count()));
    QVERIFY(longestTurn < 500);
    checkAll();
}

} // namespace tunedeck

TUNEDECK_TEST(tunedeck::HostilePlayerTest, QGuiApplication)
#include "HostilePlayerTest.moc"
