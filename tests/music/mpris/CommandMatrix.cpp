// SPDX-License-Identifier: MIT
#include "CommandMatrix.h"

#include "support/finishBackgroundJobs.h"

#include <QRegularExpression>
#include <QTest>

#include <algorithm>
#include <array>

using namespace Qt::StringLiterals;

namespace tunedeck {

namespace {

template <typename Value> struct Named {
    Value value;
    const char *name;
};

const QString playlistName = u"Far Away"_s;
const QString playlistTitle = u"硝子の停留所にて"_s; ///< of its first track
constexpr qsizetype playlistNumber = 2;
constexpr double startPosition = 20;
constexpr double target = 60;

} // namespace

// Rows

/// The pinned player is the one that the command has a meaning for. Where that holds for both, it is the second, which
/// is followed for no other reason.
bool CommandMatrix::isFirstPinned(const Row &row)
{
    return row.scene == Scene::OnePlays || (row.scene == Scene::PlayingAndPaused && row.command == Command::Pause);
}

const CommandMatrix::Player &CommandMatrix::pinnedPlayer(const Row &row) const
{
    return isFirstPinned(row) ? m_first : m_second;
}

/// The automatic choice is a player that plays, if there is one.
bool CommandMatrix::isOnShowPlaying(const Row &row)
{
    return row.choice == Choice::Automatic || isFirstPinned(row) ? firstPlays(row.scene) : secondPlays(row.scene);
}

/// A player that plays cannot be told to play, and one that is paused not to pause.
bool CommandMatrix::isPossible(const Row &row)
{
    return row.command == Command::Pause ? isOnShowPlaying(row) : row.command != Command::Play || !isOnShowPlaying(row);
}

void CommandMatrix::addRows()
{
    constexpr std::array scenes{Named{Scene::OnePlays, "one plays"}, Named{Scene::TwoPlay, "two play"},
        Named{Scene::PlayingAndPaused, "playing and paused"}, Named{Scene::BothPaused, "both paused"}};
    constexpr std::array commands{Named{Command::Pause, "pause"}, Named{Command::Play, "play"},
        Named{Command::Next, "next"}, Named{Command::Hold, "hold"}, Named{Command::Volume, "volume"},
        Named{Command::Seek, "seek"}, Named{Command::Playlist, "playlist"}};
    constexpr std::array choices{Named{Choice::Automatic, "automatic"}, Named{Choice::Pinned, "pinned"}};

    QTest::addColumn<Scene>("scene");
    QTest::addColumn<Command>("command");
    QTest::addColumn<Choice>("choice");
    for (const auto &scene : scenes) {
        for (const auto &command : commands) {
            for (const auto &choice : choices) {
                if (isPossible({scene.value, command.value, choice.value})) {
                    QTest::addRow("%s, %s, %s", scene.name, command.name, choice.name)
                        << scene.value << command.value << choice.value;
                }
            }
        }
    }
}

void CommandMatrix::runRow(Answers answers)
{
    QFETCH(const Scene, scene);
    QFETCH(const Command, command);
    QFETCH(const Choice, choice);
    const Row row{scene, command, choice};

    QVERIFY(bringIn(m_first, firstPlays(scene)));
    if (scene == Scene::OnePlays) {
        m_second.process.reset();
    } else {
        QVERIFY(bringIn(m_second, secondPlays(scene)));
    }
    showMusic(row);
    if (QTest::currentTestFailed()) {
        return;
    }
    const Player &onShow = *playerOnShow();
    for (const Player *player : {&m_first, &m_second}) {
        if (player->process) {
            player->process->takeCalls();
        }
    }

    if (answers == Answers::Late) {
        QVERIFY(onShow.process->tell(u"late 300"_s));
    } else if (answers == Answers::Never) {
        QVERIFY(onShow.process->tell(u"hold on"_s));
    }
    give(command);
    QVERIFY(shows(onShow.title));
    if (answers == Answers::Never) {
        awaitSilence(command);
        QVERIFY(shows(onShow.title));
        QVERIFY(onShow.process->tell(u"hold off"_s));
        QTRY_VERIFY(m_music->isResponding());
        QVERIFY(comesToRest());
    } else {
        awaitAnswer(command);
    }
    expectCalls(row, onShow, answers);
    expectEffect(row, onShow, answers);
}

// Steps of a row

void CommandMatrix::initTestCase()
{
    m_bus = std::make_unique<PrivateBus>();
    QVERIFY(m_bus->isRunning());
    m_control = m_bus->connect(u"control"_s);
}

void CommandMatrix::init()
{
    QTest::failOnWarning(QRegularExpression(u".*"_s));
}

void CommandMatrix::cleanup()
{
    m_connector.reset();
    m_music.reset();
    m_musicConnection = QDBusConnection(u"none"_s);
    QDBusConnection::disconnectFromBus(QString::number(m_connections));
}

/// Lets the player be as it was at its start. The players stay from row to row, since starting one takes long.
bool CommandMatrix::bringIn(Player &player, bool isPlaying)
{
    if (!player.process) {
        player.process = std::make_unique<DemoPlayerProcess>(*m_bus, m_control, QStringList{u"--name"_s, player.name});
    }
    // The next track is beside this one in the queue, whatever playlist the last row has left.
    const QStringList lines{u"hold off"_s, u"late 0"_s, u"playlists 1"_s, u"playlists 4"_s,
        u"track %1"_s.arg(player.track), u"track %1"_s.arg(player.track + 1), u"track %1"_s.arg(player.track),
        u"seek %1"_s.arg(startPosition), u"volume 0.5"_s, isPlaying ? u"play"_s : u"pause"_s};
    return player.process->isReady()
        && std::ranges::all_of(lines, [&player](const QString &line) { return player.process->tell(line); });
}

void CommandMatrix::showMusic(const Row &row)
{
    m_folder = std::make_unique<QTemporaryDir>();
    m_defaults = std::make_unique<UserDefaults>(m_folder->filePath(u"settings.conf"_s));
    if (row.choice == Choice::Pinned) {
        m_defaults->setValue(u"FollowedPlayer"_s, pinnedPlayer(row).name);
    }
    m_musicConnection = m_bus->connect(QString::number(++m_connections));
    m_music = std::make_unique<MprisMusicApplication>(m_musicConnection, *m_defaults, m_launcher, m_rest.clock());
    m_connector = std::make_unique<MusicConnector>(*m_music, m_windowActivation);
    QTRY_VERIFY(m_music->isReady());
    QTRY_VERIFY(playerOnShow());
    QVERIFY(comesToRest());
    QCOMPARE(m_connector->currentState(), isOnShowPlaying(row) ? PlayerState::playing : PlayerState::paused);
    if (row.choice == Choice::Pinned) {
        QCOMPARE(playerOnShow()->name, pinnedPlayer(row).name);
    }
    if (row.command == Command::Playlist) {
        m_connector->loadPlaylists();
        QTRY_VERIFY(m_connector->playlistOptions().size() > playlistNumber);
        QCOMPARE(m_connector->playlistOptions().at(playlistNumber).name, playlistName);
    }
}

const CommandMatrix::Player *CommandMatrix::playerOnShow() const
{
    for (const Player *player : {&m_first, &m_second}) {
        if (shows(player->title)) {
            return player;
        }
    }
    return nullptr;
}

bool CommandMatrix::shows(const QString &title) const
{
    return m_connector->isMusicAppRunning() && m_connector->currentTrack()
        && m_connector->currentTrack()->trackName == title;
}

void CommandMatrix::give(Command command)
{
    switch (command) {
    case Command::Pause:
    case Command::Play:
        QVERIFY(m_music->playpause());
        m_connector->stopProgressPollingIfIdle();
        break;
    case Command::Next:
        QVERIFY(m_music->nextTrack());
        break;
    case Command::Hold:
        QVERIFY(m_music->fastForward());
        break;
    case Command::Volume:
        m_connector->setVolume(40);
        break;
    case Command::Seek:
        QVERIFY(m_music->setPlayerPosition(target));
        break;
    case Command::Playlist:
        m_connector->setSelectedPlaylist(m_connector->playlistOptions().at(playlistNumber));
        m_connector->playSelectedPlaylist();
        break;
    }
}

void CommandMatrix::awaitAnswer(Command command)
{
    if (command == Command::Hold) {
        // Two steps, of which the second follows the answer to the first.
        const double start = m_music->playerPosition().value_or(0);
        QTRY_VERIFY(m_music->playerPosition().value_or(0) > start + 3);
        QVERIFY(m_music->resume());
    }
    QVERIFY(finishBackgroundJobs(*m_connector));
    QVERIFY(comesToRest());
}

/// Waits until the player has let its deadline pass, and gives the command again, which is then not sent.
void CommandMatrix::awaitSilence(Command command)
{
    if (command == Command::Playlist) {
        // A playlist is asked for on a thread of its own.
        QVERIFY(finishBackgroundJobs(*m_connector));
        return;
    }
    QTRY_VERIFY(!m_music->isResponding());
    QVERIFY(!m_music->playpause());
    QVERIFY(!m_music->nextTrack());
    m_music->resume();
    QVERIFY(MusicAtRest::roundTrip(m_musicConnection));
}

QStringList CommandMatrix::expectedCalls(const Row &row, int track, Answers answers)
{
    switch (row.command) {
    case Command::Pause:
    case Command::Play:
        return {u"PlayPause"_s};
    case Command::Next:
        return {u"Next"_s};
    case Command::Volume:
        return {u"Set Volume 0.404"_s};
    case Command::Seek:
        return {u"SetPosition /org/tunedeck/demo/track/%1 60000000"_s.arg(track)};
    case Command::Playlist:
        break;
    case Command::Hold:
        return {};
    }
    // A playlist is not played before the player has said that another one plays.
    if (answers == Answers::Never) {
        return {};
    }
    const QString activation = u"ActivatePlaylist /org/tunedeck/demo/playlist/2"_s;
    return isOnShowPlaying(row) ? QStringList{u"Pause"_s, activation} : QStringList{activation};
}

void CommandMatrix::expectCalls(const Row &row, const Player &onShow, Answers answers)
{
    const Player &other = &onShow == &m_first ? m_second : m_first;
    QStringList calls = onShow.process->takeCommands();
    if (row.command == Command::Hold) {
        QVERIFY(!calls.isEmpty());
        calls.removeIf([](const QString &call) { return call.startsWith(u"SetPosition "_s); });
    }
    QCOMPARE(calls, expectedCalls(row, onShow.track, answers));
    if (other.process) {
        QCOMPARE(other.process->takeCommands(), QStringList());
    }
}

void CommandMatrix::expectEffect(const Row &row, const Player &onShow, Answers answers)
{
    const bool playsPlaylist = row.command == Command::Playlist && answers != Answers::Never;
    const QString title = playsPlaylist ? playlistTitle
        : row.command == Command::Next  ? onShow.nextTitle
                                        : onShow.title;
    const bool isPlaying =
        row.command == Command::Play || playsPlaylist || (row.command != Command::Pause && isOnShowPlaying(row));
    QTRY_VERIFY2(shows(title), qPrintable(m_connector->currentTrack()->trackName.value_or(u"nothing"_s)));
    QTRY_COMPARE(m_connector->currentState(), isPlaying ? PlayerState::playing : PlayerState::paused);
    QCOMPARE(m_connector->isProgressPollingTimerActive(), isPlaying);
    QTRY_COMPARE(m_connector->soundVolume(), row.command == Command::Volume ? 40.0 : 50.0);
    const double position = m_music->playerPosition().value_or(-1);
    switch (row.command) {
    case Command::Seek:
        QVERIFY2(position >= target && position < target + 3, qPrintable(QString::number(position)));
        break;
    case Command::Hold:
        QVERIFY2(position > startPosition + 1, qPrintable(QString::number(position)));
        break;
    case Command::Next:
        QVERIFY2(position < 3, qPrintable(QString::number(position)));
        break;
    default:
        QVERIFY2(playsPlaylist ? position < 3 : position < target, qPrintable(QString::number(position)));
    }
}

} // namespace tunedeck
