// SPDX-License-Identifier: MIT
#include "PlayerWitness.h"
#include "ShownRecord.h"
#include "music/MusicConnector.h"
#include "music/mpris/MprisMusicApplication.h"
#include "platform/ApplicationLauncher.h"
#include "platform/UserDefaults.h"
#include "platform/WindowActivation.h"

#include <QProcess>
#include <QRegularExpression>
#include <QTemporaryDir>
#include <QTest>

#include <algorithm>
#include <array>
#include <memory>
#include <optional>

using namespace Qt::StringLiterals;

namespace tunedeck {

namespace {

/// The playlists that run-player gives the player. Each has one track.
const QString firstAlone = u"First Alone"_s;
const QString secondAlone = u"Second Alone"_s;
const QString firstTags = u"Low Hum / The Even Tones / Bench Recordings"_s;
const QString secondTags = u"Second Wind / Überton & Co / Später"_s;
/// The list that Strawberry's own window shows.
const QString onView = u"On View"_s;

/// The differences between players.
struct Habits {
    QLatin1String player;
    PlaylistSource source;
    /// Whether it plays its own playlists, so that the program knows which one plays.
    bool playsItsOwn = false;
    /// Whether it has the list that its window shows, onView, and tells this one as the active one.
    bool hasOneOnView = false;
};

const std::array habits{
    // It does not announce that it opens any kind of playlist file.
    Habits{QLatin1String("mpv"), PlaylistSource::none},
    Habits{QLatin1String("vlc"), PlaylistSource::files},
    Habits{QLatin1String("strawberry"), PlaylistSource::music, true, true},
    Habits{QLatin1String("rhythmbox"), PlaylistSource::music, true},
};

constexpr int longestStart = 20'000; // milliseconds, until a player shows itself and its playlists
constexpr int patience = 15'000; // milliseconds, for anything that a player does

} // namespace

/// Tests MusicConnector's playlists with a player that people use. TUNEDECK_PLAYER names it; run-player starts it. All
/// tests use the same player, so each one continues where the last one ended.
class RealPlaylistsTest : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void initTestCase();
    void init() { QTest::failOnWarning(QRegularExpression(u".*"_s)); }

    void thePlaylistsAreLoaded();
    void aChosenOneIsPlayed();
    void theOneThatPlaysIsSelected();
    void anotherIsPlayedInPlaceOfTheOneThatPlays();
    void theOneOnViewIsPlayedLikeAnyOther();

private:
    static bool createsNoTabs();
    void makeTabs();
    [[nodiscard]] bool offersPlaylists() const { return m_habits->source != PlaylistSource::none; }
    /// Rhythmbox appends how many tracks there are to some names.
    [[nodiscard]] std::optional<PlaylistOption> option(const QString &name) const;
    [[nodiscard]] bool playUntilShown(const QString &playlist, const QString &track);

    const Habits *m_habits = nullptr;
    QTemporaryDir m_folder;
    UserDefaults m_defaults{m_folder.filePath(u"settings"_s)};
    ApplicationLauncher m_launcher;
    WindowActivation m_windowActivation;
    PlayerWitness m_witness;
    MprisMusicApplication m_music{QDBusConnection::sessionBus(), m_defaults, m_launcher};
    std::unique_ptr<MusicConnector> m_connector;
};

void RealPlaylistsTest::initTestCase()
{
    const QString player = qEnvironmentVariable("TUNEDECK_PLAYER");
    const auto found = std::ranges::find(habits, player, &Habits::player);
    QVERIFY2(found != habits.end(), "TUNEDECK_PLAYER names no player; run-player does");
    m_habits = &*found;
    m_connector = std::make_unique<MusicConnector>(m_music, m_windowActivation);
    QVERIFY(QTest::qWaitFor([this] { return m_connector->isMusicAppRunning(); }, longestStart));
    QVERIFY(m_witness.findPlayer());
    if (player == u"strawberry") {
        if (createsNoTabs()) {
            QSKIP("Strawberry 1.2 adds no tab when its command line asks for one");
        }
        makeTabs();
    }
}

bool RealPlaylistsTest::createsNoTabs()
{
    QProcess strawberry;
    strawberry.start(u"strawberry"_s, {u"--version"_s});
    return strawberry.waitForFinished() && strawberry.readAllStandardOutput().contains("Strawberry 1.2.");
}

/// Strawberry's playlists are the tabs of its window.
void RealPlaylistsTest::makeTabs()
{
    const QString media = qEnvironmentVariable("TUNEDECK_MEDIA");
    const std::array tabs{std::pair(firstAlone, u"/first.flac"_s), std::pair(secondAlone, u"/second.mp3"_s),
        std::pair(onView, u"/second.mp3"_s)};
    for (const auto &[name, file] : tabs) {
        const int before = m_witness.playlistCount();
        QCOMPARE(QProcess::execute(u"strawberry"_s, {u"--create"_s, name, media + file}), 0);
        QTRY_VERIFY(m_witness.playlistCount() > before);
    }
}

std::optional<PlaylistOption> RealPlaylistsTest::option(const QString &name) const
{
    const QList<PlaylistOption> &options = m_connector->playlistOptions();
    const auto found =
        std::ranges::find_if(options, [&name](const PlaylistOption &option) { return option.name.startsWith(name); });
    return found == options.end() ? std::nullopt : std::optional(*found);
}

bool RealPlaylistsTest::playUntilShown(const QString &playlist, const QString &track)
{
    m_connector->setSelectedPlaylist(option(playlist));
    m_connector->playSelectedPlaylist();
    const bool isShown = QTest::qWaitFor(
        [&] {
            return ShownRecord::text(m_connector->currentTrack()) == track && m_witness.status() == u"Playing"
                && m_music.playerState() == PlayerState::playing;
        },
        patience);
    m_witness.awaitQuiet();
    return isShown && ShownRecord::text(m_connector->currentTrack()) == track && m_witness.status() == u"Playing";
}

void RealPlaylistsTest::thePlaylistsAreLoaded()
{
    // The playlists may appear some time after the player.
    const bool isLoaded = QTest::qWaitFor(
        [this] {
            m_connector->loadPlaylists();
            return m_connector->playlistSource() == m_habits->source
                && (!offersPlaylists() || (option(firstAlone) && option(secondAlone)));
        },
        longestStart);
    QStringList names;
    for (const PlaylistOption &option : m_connector->playlistOptions()) {
        names.append(option.name);
    }
    qInfo().noquote() << "on offer:" << names;
    QVERIFY(isLoaded);
    QCOMPARE(names.isEmpty(), !offersPlaylists());
}

void RealPlaylistsTest::aChosenOneIsPlayed()
{
    if (!offersPlaylists()) {
        QSKIP("This player neither offers playlists nor says that it opens playlist files");
    }
    QVERIFY(playUntilShown(secondAlone, secondTags));
}

void RealPlaylistsTest::theOneThatPlaysIsSelected()
{
    const std::optional<PlaylistOption> expected = m_habits->playsItsOwn ? option(secondAlone) : std::nullopt;
    QCOMPARE(expected.has_value(), m_habits->playsItsOwn);
    // A different selection first proves that the load replaces it.
    m_connector->setSelectedPlaylist(expected ? std::nullopt : std::optional(PlaylistOption{}));
    m_connector->loadPlaylists();
    QTRY_COMPARE(m_connector->selectedPlaylist(), expected);
}

void RealPlaylistsTest::anotherIsPlayedInPlaceOfTheOneThatPlays()
{
    if (!offersPlaylists()) {
        QSKIP("This player neither offers playlists nor says that it opens playlist files");
    }
    QVERIFY(playUntilShown(firstAlone, firstTags));
}

void RealPlaylistsTest::theOneOnViewIsPlayedLikeAnyOther()
{
    if (!m_habits->hasOneOnView) {
        QSKIP("This player does not show playlists");
    }
    QVERIFY(playUntilShown(onView, secondTags));
}

} // namespace tunedeck

QTEST_MAIN(tunedeck::RealPlaylistsTest)
#include "RealPlaylistsTest.moc"
