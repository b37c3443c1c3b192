// SPDX-License-Identifier: MIT
#include "PlayerWitness.h"
#include "ShownRecord.h"
#include "music/MusicConnector.h"
#include "music/mpris/MprisMusicApplication.h"
#include "platform/ApplicationLauncher.h"
#include "platform/UserDefaults.h"
#include "platform/WindowActivation.h"

#include <QRegularExpression>
#include <QTemporaryDir>
#include <QTest>

#include <array>
#include <cmath>
#include <functional>
#include <memory>

using namespace Qt::StringLiterals;

namespace tunedeck {

namespace {

constexpr int longestStart = 20'000; // milliseconds, until the players show themselves
constexpr int patience = 15'000; // milliseconds, for anything that a player does
constexpr double tolerance = 1.5; // seconds: players report the position late

bool until(const std::function<bool()> &condition, int limit = patience)
{
    return QTest::qWaitFor(condition, limit);
}

} // namespace

/// Tests MusicConnector and the classes below it with two players that people use, beside each other: mpv and VLC.
/// run-player starts them. Each test continues where the last one ended.
class RealPlayersTest : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void initTestCase();
    void init() { QTest::failOnWarning(QRegularExpression(u".*"_s)); }

    void oneOfTwoThatPlayIsOnShow();
    void eachPlayerIsListedOnce();
    void aPauseReachesTheOneOnShowWhileTheOtherPlays();
    void playReachesTheSameOne();
    void nextReachesTheOneOnShow();
    void aSeekReachesTheOneOnShow();
    void theVolumeReachesTheOneOnShow();
    void theOtherIsFollowedWhenItBeginsToPlay();
    void aPauseThenReachesTheOther();
    void thePinnedOneIsOnShowWhateverTheOtherDoes();
    void playAndPauseReachThePinnedOne();
    void whenThePinnedOneQuitsTheOtherIsFollowed();

private:
    struct Player {
        QString name;
        QStringList titles;
        PlayerWitness witness = {};
        double volume = -1;
    };

    [[nodiscard]] bool isOnShow(const Player &player) const;
    /// That the player is on show, in this state, which the player and the display agree on.
    [[nodiscard]] bool showsIn(const Player &player, FourCharCode state) const;
    void expectPlayPauseLeadsTo(FourCharCode state);

    Player m_mpv{.name = u"mpv"_s, .titles = {u"Low Hum"_s, u"Second Wind"_s}};
    Player m_vlc{.name = u"vlc"_s, .titles = {u"Third Rail"_s, u"Fourth Estate"_s}};
    Player *m_shown = nullptr;
    Player *m_other = nullptr;

    QTemporaryDir m_folder;
    UserDefaults m_defaults{m_folder.filePath(u"settings"_s)};
    ApplicationLauncher m_launcher;
    WindowActivation m_windowActivation;
    std::unique_ptr<MprisMusicApplication> m_music;
    std::unique_ptr<MusicConnector> m_connector;
};

void RealPlayersTest::initTestCase()
{
    for (Player *player : {&m_mpv, &m_vlc}) {
        QVERIFY(until([=] { return player->witness.findPlayer(player->name); }, longestStart));
        QVERIFY(until([=] { return player->witness.status() == u"Playing"; }, longestStart));
    }
    m_music = std::make_unique<MprisMusicApplication>(QDBusConnection::sessionBus(), m_defaults, m_launcher);
    m_connector = std::make_unique<MusicConnector>(*m_music, m_windowActivation);
}

bool RealPlayersTest::isOnShow(const Player &player) const
{
    return m_connector->currentTrack()
        && player.titles.contains(m_connector->currentTrack()->trackName.value_or(QString()))
        && m_connector->currentTrack()->trackName == player.witness.title();
}

bool RealPlayersTest::showsIn(const Player &player, FourCharCode state) const
{
    return isOnShow(player) && m_connector->currentState() == state
        && player.witness.status() == (state == PlayerState::playing ? u"Playing" : u"Paused");
}

void RealPlayersTest::oneOfTwoThatPlayIsOnShow()
{
    QVERIFY(until([this] { return showsIn(m_mpv, PlayerState::playing) || showsIn(m_vlc, PlayerState::playing); }));
    m_shown = isOnShow(m_mpv) ? &m_mpv : &m_vlc;
    m_other = m_shown == &m_mpv ? &m_vlc : &m_mpv;
    qInfo().noquote() << "on show:" << m_shown->name;
}

void RealPlayersTest::eachPlayerIsListedOnce()
{
    const auto ids = [this] {
        QStringList listed;
        for (const FollowablePlayer &player : m_music->followablePlayers().followablePlayers()) {
            listed.append(player.id + (player.isFollowed ? u" followed"_s : QString()));
        }
        listed.sort();
        return listed;
    };
    QStringList expected{m_shown->name + u" followed"_s, m_other->name};
    expected.sort();
    QTRY_COMPARE(ids(), expected);
}

/// Also that the other one goes on as it is, and that the player stays on show.
void RealPlayersTest::expectPlayPauseLeadsTo(FourCharCode state)
{
    const QString status = m_other->witness.status();
    m_mpv.witness.awaitQuiet();
    // The button does the same.
    QVERIFY(m_music->playpause());
    m_connector->stopProgressPollingIfIdle();
    QVERIFY(isOnShow(*m_shown));
    QVERIFY(until([=, this] { return showsIn(*m_shown, state); }));
    m_mpv.witness.awaitQuiet();
    QVERIFY(showsIn(*m_shown, state));
    QCOMPARE(m_other->witness.status(), status);
    QCOMPARE(m_connector->isProgressPollingTimerActive(), state == PlayerState::playing);
}

void RealPlayersTest::aPauseReachesTheOneOnShowWhileTheOtherPlays()
{
    QCOMPARE(m_other->witness.status(), u"Playing"_s);
    expectPlayPauseLeadsTo(PlayerState::paused);
}

void RealPlayersTest::playReachesTheSameOne()
{
    expectPlayPauseLeadsTo(PlayerState::playing);
}

void RealPlayersTest::nextReachesTheOneOnShow()
{
    QCOMPARE(m_shown->witness.title(), m_shown->titles.first());
    QVERIFY(m_music->nextTrack());
    QVERIFY(until([this] { return m_shown->witness.title() == m_shown->titles.last() && isOnShow(*m_shown); }));
    m_mpv.witness.awaitQuiet();
    QVERIFY(showsIn(*m_shown, PlayerState::playing));
    QCOMPARE(m_other->witness.title(), m_other->titles.first());
}

void RealPlayersTest::aSeekReachesTheOneOnShow()
{
    const double before = m_other->witness.position();
    QVERIFY(m_music->setPlayerPosition(40));
    QVERIFY(until([this] { return std::abs(m_shown->witness.position() - 40) < tolerance; }));
    QVERIFY(m_other->witness.position() < before + tolerance + 1);
    QVERIFY(until([this] { return std::abs(*m_music->playerPosition() - m_shown->witness.position()) < tolerance; }));
}

void RealPlayersTest::theVolumeReachesTheOneOnShow()
{
    const double before = m_other->witness.volume();
    m_connector->setVolume(37);
    QVERIFY(until([this] { return std::abs(m_shown->witness.volume() - 0.37) < 0.01; }));
    m_mpv.witness.awaitQuiet();
    QCOMPARE(m_connector->soundVolume(), 37.0);
    QCOMPARE(m_other->witness.volume(), before);
}

void RealPlayersTest::theOtherIsFollowedWhenItBeginsToPlay()
{
    m_other->witness.playPause();
    QVERIFY(until([this] { return m_other->witness.status() == u"Paused"; }));
    expectPlayPauseLeadsTo(PlayerState::paused);
    m_other->witness.playPause();
    QVERIFY(until([this] { return showsIn(*m_other, PlayerState::playing); }));
    m_mpv.witness.awaitQuiet();
    QVERIFY(showsIn(*m_other, PlayerState::playing));
    QCOMPARE(m_shown->witness.status(), u"Paused"_s);
    std::swap(m_shown, m_other);
}

void RealPlayersTest::aPauseThenReachesTheOther()
{
    expectPlayPauseLeadsTo(PlayerState::paused);
}

void RealPlayersTest::thePinnedOneIsOnShowWhateverTheOtherDoes()
{
    m_defaults.setValue(u"FollowedPlayer"_s, m_other->name);
    QVERIFY(until([this] { return showsIn(*m_other, PlayerState::paused); }));
    std::swap(m_shown, m_other);
    m_other->witness.playPause();
    QVERIFY(until([this] { return m_other->witness.status() == u"Playing"; }));
    m_mpv.witness.awaitQuiet();
    QVERIFY(showsIn(*m_shown, PlayerState::paused));
}

void RealPlayersTest::playAndPauseReachThePinnedOne()
{
    expectPlayPauseLeadsTo(PlayerState::playing);
    expectPlayPauseLeadsTo(PlayerState::paused);
}

void RealPlayersTest::whenThePinnedOneQuitsTheOtherIsFollowed()
{
    m_shown->witness.quitPlayer();
    QVERIFY(until([this] { return m_shown->witness.isGone(); }));
    QVERIFY(until([this] { return showsIn(*m_other, PlayerState::playing); }));
    const QString awaited = m_music->followablePlayers().awaitedPlayer();
    QVERIFY2(awaited.startsWith(m_shown->name, Qt::CaseInsensitive), qPrintable(awaited));
    std::swap(m_shown, m_other);
    QVERIFY(m_music->playpause());
    QVERIFY(until([this] { return showsIn(*m_shown, PlayerState::paused); }));
}

} // namespace tunedeck

QTEST_MAIN(tunedeck::RealPlayersTest)
#include "RealPlayersTest.moc"
