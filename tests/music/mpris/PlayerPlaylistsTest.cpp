// SPDX-License-Identifier: MIT
#include "music/mpris/PlayerPlaylists.h"

#include "DemoPlayerProcess.h"
#include "MusicAtRest.h"
#include "music/MusicConnector.h"
#include "music/mpris/MprisMusicApplication.h"
#include "music/mpris/PlayingPlaylist.h"
#include "platform/ApplicationLauncher.h"
#include "platform/UserDefaults.h"
#include "platform/WindowActivation.h"
#include "support/PrivateBus.h"
#include "support/TurnWatch.h"
#include "support/finishBackgroundJobs.h"
#include "support/registerTest.h"

#include <QDBusConnectionInterface>
#include <QGuiApplication>
#include <QSignalSpy>
#include <QTemporaryDir>
#include <QTest>

#include <future>

using namespace Qt::StringLiterals;

namespace tunedeck {

namespace {

class LaunchCounter : public ApplicationLauncher {
public:
    void launch(const QStringList &, const QString &) override { ++launches; }
    int launches = 0;
};

/// The result of `work`, which runs on a thread of its own while the main thread's event loop runs.
template <typename Work> auto onAnotherThread(Work work)
{
    auto result = std::async(std::launch::async, work);
    (void)QTest::qWaitFor(
        [&] { return result.wait_for(std::chrono::seconds(0)) == std::future_status::ready; }, 20'000);
    return result.get();
}

const QString playlistPath = u"/org/tunedeck/demo/playlist/"_s;

} // namespace

/// Playlists over a real bus, with the demo player as a process of its own.
class PlayerPlaylistsTest : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void init();
    void cleanup();

    void allPlaylistsAreLoadedPageByPage_data();
    void allPlaylistsAreLoadedPageByPage();
    void shortPagesDoNotCutTheList_data();
    void shortPagesDoNotCutTheList();
    void anErrorBeforeTheLastPlaylistIsNotTheEndOfTheList();
    void anErrorInPlaceOfAnEmptyPageIsAnEmptyList();
    void aPlayerIsAskedForAnOrderThatItKnows();
    void tenThousandPlaylistsAreLoadedAndNotFeltInTheWindow();
    void aRenamedPlaylistShowsItsNewNameAtTheNextLoad();
    void aPlayerWithoutPlaylistsIsNotAskedForThem_data();
    void aPlayerWithoutPlaylistsIsNotAskedForThem();
    void aPlayerThatOpensPlaylistFilesIsOfferedThoseOfTheMusicFolder();
    void ofTooManyPlaylistFilesTheConnectorKnowsThatThereAreMore();
    void aPropertyThatIsNotListedIsNeverAskedFor();
    void anyValueOfAnyPropertyIsSurvived_data();
    void anyValueOfAnyPropertyIsSurvived();
    void aSilentPlayerIsGivenUpAndNotFeltInTheWindow();
    void aListThatTakesTooLongIsGivenUp();
    void whoeverWaitsIsLetGoAtOnce();
    void theProgramsEndDoesNotWaitForASilentPlayer();
    void aChangeOfPlayerDoesNotWaitForASilentOne();
    void aPlaylistIsPlayedOncePlayingHasStopped_data();
    void aPlaylistIsPlayedOncePlayingHasStopped();
    void thePlaylistThatPlaysIsNotPlayedAgain();
    void thePlaylistOfAPlayerThatComesPausedIsSelected();
    void thePlaylistOnViewInAStoppedPlayerIsPlayed();
    void aPlaylistOnViewWhileAnotherPlaysIsPlayed();
    void strawberrysPlaylistOnViewIsPlayed_data();
    void strawberrysPlaylistOnViewIsPlayed();
    void aPlaylistThatWasNeverListedIsNotPlayed();
    void aPlayerThatTakesNoCommandsIsSentNone();
    void aMusicThatDoesNotRunIsLaunchedInstead();
    void aPlaylistChosenBeforeThePlayerIsThereIsPlayedThen();

private:
    void keepInTheMusicFolder(const QStringList &files) const;
    void startPlayer(const QStringList &lines, const QString &name = u"tunedeckdemo"_s);
    void startMusic();
    void startConnector();
    void forgetCalls();
    /// The calls that the player received since forgetCalls().
    const QStringList &calls();
    /// The calls among them that are commands.
    [[nodiscard]] QStringList commands();
    [[nodiscard]] bool comesToRest() const { return m_rest.isReached(*m_music, m_musicConnection); }
    void tell(const QString &line) const { QVERIFY2(m_player->tell(line), qPrintable(line)); }
    /// The user chooses a playlist, and Done has been carried out when this returns.
    void play(qsizetype number);
    [[nodiscard]] PlaylistOption option(qsizetype number) const { return m_connector->playlistOptions().at(number); }

    std::unique_ptr<PrivateBus> m_bus;
    std::unique_ptr<QTemporaryDir> m_folder;
    std::unique_ptr<UserDefaults> m_defaults;
    LaunchCounter m_launcher;
    WindowActivation m_windowActivation;
    std::unique_ptr<DemoPlayerProcess> m_player;
    MusicAtRest m_rest;
    QDBusConnection m_musicConnection{u"none"_s};
    std::unique_ptr<MprisMusicApplication> m_music;
    std::unique_ptr<MusicConnector> m_connector;
    QStringList m_calls;
};

void PlayerPlaylistsTest::init()
{
    QTest::failOnWarning(QRegularExpression(u".*"_s));
    m_bus = std::make_unique<PrivateBus>();
    QVERIFY(m_bus->isRunning());
    m_folder = std::make_unique<QTemporaryDir>();
    qputenv("XDG_CONFIG_HOME", m_folder->path().toUtf8());
    m_defaults = std::make_unique<UserDefaults>(m_folder->filePath(u"settings.conf"_s));
    m_launcher.launches = 0;
    m_calls.clear();
}

void PlayerPlaylistsTest::cleanup()
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

void PlayerPlaylistsTest::keepInTheMusicFolder(const QStringList &files) const
{
    const QDir folder(m_folder->path());
    QVERIFY(folder.mkdir(u"Music"_s));
    QFile userFolders(folder.filePath(u"user-dirs.dirs"_s));
    QVERIFY(userFolders.open(QFile::WriteOnly));
    userFolders.write("XDG_MUSIC_DIR=\"" + m_folder->path().toUtf8() + "/Music\"\n");
    for (const QString &name : files) {
        QFile file(folder.filePath(u"Music/"_s + name));
        QVERIFY(file.open(QFile::WriteOnly));
    }
}

void PlayerPlaylistsTest::startPlayer(const QStringList &lines, const QString &name)
{
    QStringList arguments{u"--play"_s, u"--name"_s, name};
    for (const QString &line : lines) {
        arguments << u"--do"_s << line;
    }
    m_player = std::make_unique<DemoPlayerProcess>(*m_bus, m_bus->connect(u"player"_s), arguments);
    QVERIFY(m_player->isReady());
}

void PlayerPlaylistsTest::startMusic()
{
    m_musicConnection = m_bus->connect(u"music"_s);
    m_music = std::make_unique<MprisMusicApplication>(m_musicConnection, *m_defaults, m_launcher, m_rest.clock());
    QTRY_VERIFY(m_music->isReady());
}

void PlayerPlaylistsTest::startConnector()
{
    startMusic();
    m_connector = std::make_unique<MusicConnector>(*m_music, m_windowActivation);
    QSignalSpy selected(m_connector.get(), &MusicConnector::selectedPlaylistChanged);
    QTRY_COMPARE(selected.count(), 1);
    forgetCalls();
}

void PlayerPlaylistsTest::forgetCalls()
{
    m_player->takeCalls();
    m_calls.clear();
}

const QStringList &PlayerPlaylistsTest::calls()
{
    m_calls += m_player->takeCalls();
    return m_calls;
}

QStringList PlayerPlaylistsTest::commands()
{
    QStringList commands = calls();
    commands.removeIf([](const QString &call) { return call.startsWith(u"Get"); });
    return commands;
}

void PlayerPlaylistsTest::play(qsizetype number)
{
    m_connector->setSelectedPlaylist(option(number));
    m_connector->playSelectedPlaylist();
    QVERIFY(finishBackgroundJobs(*m_connector));
    QVERIFY(comesToRest());
}

void PlayerPlaylistsTest::allPlaylistsAreLoadedPageByPage_data()
{
    QTest::addColumn<int>("count");
    QTest::addColumn<QStringList>("calls");
    QTest::addColumn<QString>("lastName");
    const QString first = u"GetPlaylists 0 1000 UserDefined false"_s;
    const QString second = u"GetPlaylists 1000 1000 UserDefined false"_s;
    QTest::newRow("none") << 0 << QStringList{first} << QString();
    QTest::newRow("one") << 1 << QStringList{first} << u"Everything"_s;
    QTest::newRow("a full page") << 1'000 << QStringList{first, second} << u"List 999"_s;
    QTest::newRow("more than a page") << 1'500 << QStringList{first, second} << u"List 1499"_s;
}

void PlayerPlaylistsTest::allPlaylistsAreLoadedPageByPage()
{
    QFETCH(const int, count);
    QFETCH(const QString, lastName);
    startPlayer({u"playlists %1"_s.arg(count)});
    startMusic();
    m_connector = std::make_unique<MusicConnector>(*m_music, m_windowActivation);
    const QSignalSpy loaded(m_connector.get(), &MusicConnector::playlistOptionsChanged);
    QTRY_COMPARE(loaded.count(), 1);
    QCOMPARE(m_connector->playlistOptions().size(), count);
    QTEST(calls().filter(u"GetPlaylists"_s), "calls");
    if (count > 0) {
        QCOMPARE(m_connector->playlistOptions().constLast().name, lastName);
        QCOMPARE(m_connector->selectedPlaylist()->name, u"Everything"_s);
    } else {
        QCOMPARE(m_connector->selectedPlaylist(), std::nullopt);
    }
}

void PlayerPlaylistsTest::shortPagesDoNotCutTheList_data()
{
    QTest::addColumn<QStringList>("lines");
    QTest::addColumn<qsizetype>("questions");
    QTest::newRow("counted") << QStringList{u"pages 50 lenient"_s} << qsizetype(3);
    QTest::newRow("not counted") << QStringList{u"pages 50 lenient"_s, u"absent PlaylistCount"_s} << qsizetype(4);
    QTest::newRow("ended by an error") << QStringList{u"pages 50 strict"_s, u"absent PlaylistCount"_s} << qsizetype(4);
}

void PlayerPlaylistsTest::shortPagesDoNotCutTheList()
{
    QFETCH(const QStringList, lines);
    startPlayer(QStringList{u"playlists 120"_s} + lines);
    startMusic();
    QCOMPARE(onAnotherThread([this] { return m_music->playlistIds().value_or(QVariantList()).size(); }), 120);
    QTEST(calls().filter(u"GetPlaylists"_s).size(), "questions");
}

void PlayerPlaylistsTest::anErrorBeforeTheLastPlaylistIsNotTheEndOfTheList()
{
    startPlayer({u"playlists 120"_s, u"pages 50 strict"_s, u"wrong PlaylistCount int 200"_s});
    startMusic();
    QCOMPARE(onAnotherThread([this] { return m_music->playlistIds(); }), std::nullopt);
    QCOMPARE(calls().filter(u"GetPlaylists"_s).size(), 4);
}

void PlayerPlaylistsTest::anErrorInPlaceOfAnEmptyPageIsAnEmptyList()
{
    startPlayer({u"playlists 0"_s, u"pages 50 strict"_s});
    startMusic();
    QCOMPARE(onAnotherThread([this] { return m_music->playlistIds(); }), std::optional(QVariantList()));
    QCOMPARE(calls().filter(u"GetPlaylists"_s).size(), 1);
}

void PlayerPlaylistsTest::aPlayerIsAskedForAnOrderThatItKnows()
{
    startPlayer({u"wrong Orderings array Alphabetical"_s});
    startMusic();
    QCOMPARE(onAnotherThread([this] { return m_music->playlistIds()->size(); }), 6);
    QCOMPARE(calls().filter(u"GetPlaylists"_s), QStringList{u"GetPlaylists 0 1000 Alphabetical false"_s});
}

void PlayerPlaylistsTest::tenThousandPlaylistsAreLoadedAndNotFeltInTheWindow()
{
    startPlayer({u"playlists 10000"_s});
    startMusic();
    QElapsedTimer sinceAsked;
    sinceAsked.start();
    TurnWatch turns;
    m_connector = std::make_unique<MusicConnector>(*m_music, m_windowActivation);
    QTRY_COMPARE(m_connector->playlistOptions().size(), 10'000);
    qInfo("loaded after %lld ms, longest turn meanwhile %lld ms", sinceAsked.elapsed(), turns.longest());
    QVERIFY(turns.longest() < 100);
}

void PlayerPlaylistsTest::aRenamedPlaylistShowsItsNewNameAtTheNextLoad()
{
    startPlayer({});
    startConnector();
    const PlaylistOption before = option(1);
    QCOMPARE(before.name, u"Short Ones"_s);
    tell(u"playlist 1 Very Short Ones"_s);
    QVERIFY(comesToRest());
    QCOMPARE(option(1), before);
    QCOMPARE(calls().filter(u"GetPlaylists"_s), QStringList());

    m_connector->loadPlaylists();
    QTRY_COMPARE(option(1), (PlaylistOption{before.id, u"Very Short Ones"_s}));
}

void PlayerPlaylistsTest::aPlayerWithoutPlaylistsIsNotAskedForThem_data()
{
    QTest::addColumn<QStringList>("lines");
    QTest::newRow("it refuses the question") << QStringList{u"playlists off"_s};
    QTest::newRow("it answers with nothing")
        << QStringList{u"absent ActivePlaylist"_s, u"absent Orderings"_s, u"absent PlaylistCount"_s};
}

void PlayerPlaylistsTest::aPlayerWithoutPlaylistsIsNotAskedForThem()
{
    QFETCH(const QStringList, lines);
    startPlayer(lines);
    startConnector();
    QCOMPARE(m_connector->playlistOptions().size(), 0);
    QCOMPARE(m_connector->playlistSource(), PlaylistSource::none);
    QVERIFY(!onAnotherThread([this] { return m_music->currentPlaylist(); }).has_value());
    QCOMPARE(calls().filter(u"GetPlaylists"_s), QStringList());
}

void PlayerPlaylistsTest::aPlayerThatOpensPlaylistFilesIsOfferedThoseOfTheMusicFolder()
{
    keepInTheMusicFolder({u"Quiet & Low.m3u"_s, u"Übermorgen #1.xspf"_s});
    startPlayer({u"playlists off"_s, u"wrong SupportedMimeTypes array Audio/X-MPEGURL"_s});
    startConnector();
    QCOMPARE(m_connector->playlistSource(), PlaylistSource::files);
    QCOMPARE(m_connector->playlistOptions().size(), 2);
    QCOMPARE(option(0).name, u"Quiet & Low"_s);
    QCOMPARE(option(1).name, u"Übermorgen #1"_s);
    QCOMPARE(m_connector->selectedPlaylist(), std::nullopt);

    m_connector->setSelectedPlaylist(option(1));
    m_connector->playSelectedPlaylist();
    const QString folder = QUrl::fromLocalFile(m_folder->path()).toString();
    QTRY_COMPARE(commands(), QStringList{u"OpenUri "_s + folder + u"/Music/%C3%9Cbermorgen%20%231.xspf"_s});
}

void PlayerPlaylistsTest::ofTooManyPlaylistFilesTheConnectorKnowsThatThereAreMore()
{
    QStringList files;
    for (int number = 0; number <= 10'000; ++number) {
        files.append(u"Mix %1.m3u"_s.arg(number));
    }
    keepInTheMusicFolder(files);
    startPlayer({u"playlists off"_s, u"wrong SupportedMimeTypes array Audio/X-MPEGURL"_s});
    startConnector();
    QCOMPARE(m_connector->playlistOptions().size(), 10'000);
    QVERIFY(m_connector->hasMorePlaylists());
}

void PlayerPlaylistsTest::aPropertyThatIsNotListedIsNeverAskedFor()
{
    QStringList lines;
    for (const QString &key : {u"ActivePlaylist"_s, u"PlaylistCount"_s, u"PlaybackStatus"_s}) {
        lines << u"die-on-get "_s + key;
    }
    startPlayer(lines << u"absent ActivePlaylist"_s);
    startConnector();
    QCOMPARE(m_connector->playlistOptions().size(), 6);
    QCOMPARE(m_connector->selectedPlaylist(), std::nullopt);
    m_connector->setSelectedPlaylist(option(2));
    m_connector->playSelectedPlaylist();
    QTRY_VERIFY(commands().contains(u"ActivatePlaylist "_s + playlistPath + u'2'));
}

void PlayerPlaylistsTest::anyValueOfAnyPropertyIsSurvived_data()
{
    QTest::addColumn<QString>("key");
    for (const QString &key : {u"ActivePlaylist"_s, u"Orderings"_s, u"PlaylistCount"_s}) {
        QTest::newRow(qPrintable(key)) << key;
    }
}

void PlayerPlaylistsTest::anyValueOfAnyPropertyIsSurvived()
{
    QFETCH(const QString, key);
    startPlayer({});
    startMusic();
    for (const QString &kind : {u"string"_s, u"int"_s, u"double"_s, u"bool"_s, u"empty"_s, u"huge"_s, u"control"_s,
             u"array"_s, u"int-array"_s, u"dict"_s, u"path"_s, u"bytes"_s, u"nested"_s, u"struct"_s}) {
        const QString line = u"wrong %1 %2"_s.arg(key, kind);
        QVERIFY2(m_player->tell(line), qPrintable(line));
        const auto current = onAnotherThread([this] { return m_music->currentPlaylist(); });
        QVERIFY2(current.has_value() == (key != u"ActivePlaylist"), qPrintable(line));
        const auto ids = onAnotherThread([this] { return m_music->playlistIds(); });
        QVERIFY2(ids && ids->size() == 6, qPrintable(line));
    }
}

void PlayerPlaylistsTest::aSilentPlayerIsGivenUpAndNotFeltInTheWindow()
{
    startPlayer({});
    startConnector();
    const QList<PlaylistOption> before = m_connector->playlistOptions();
    m_connector->setSelectedPlaylist(option(2));
    tell(u"silent on"_s);
    TurnWatch turns;
    m_connector->loadPlaylists();
    m_connector->playSelectedPlaylist();
    QElapsedTimer sinceAsked;
    sinceAsked.start();
    QVERIFY(!onAnotherThread([this] { return m_music->currentPlaylist(); }).has_value());
    QVERIFY(!onAnotherThread([this] { return m_music->playlistIds(); }).has_value());
    qInfo("given up after %lld ms, longest turn meanwhile %lld ms", sinceAsked.elapsed(), turns.longest());
    QVERIFY(sinceAsked.elapsed() < 5'000);
    QVERIFY(turns.longest() < 100);

    QCOMPARE(m_connector->playlistOptions(), before);
    tell(u"silent off"_s);
    tell(u"playlists 7"_s);
    // Both were ended: another load begins, and the playlist is not played later.
    const auto isLoadedAgain = [this] {
        m_connector->loadPlaylists();
        return m_connector->playlistOptions().size() == 7;
    };
    QTRY_VERIFY(isLoadedAgain());
    QCOMPARE(commands(), QStringList());
}

void PlayerPlaylistsTest::aListThatTakesTooLongIsGivenUp()
{
    startPlayer({u"playlists 10000"_s});
    startMusic();
    tell(u"late 700"_s);
    QElapsedTimer sinceAsked;
    sinceAsked.start();
    TurnWatch turns;
    QCOMPARE(onAnotherThread([this] { return m_music->playlistIds(); }), std::nullopt);
    qInfo("given up after %lld ms, longest turn meanwhile %lld ms", sinceAsked.elapsed(), turns.longest());
    QVERIFY(sinceAsked.elapsed() >= 3'900 && sinceAsked.elapsed() < 5'000);
    QVERIFY(turns.longest() < 100);
    QCOMPARE(onAnotherThread([this] { return m_music->playlistNames(); }), std::nullopt);
}

void PlayerPlaylistsTest::whoeverWaitsIsLetGoAtOnce()
{
    startPlayer({});
    const QDBusConnection connection = m_bus->connect(u"music"_s);
    const QString owner = connection.interface()->serviceOwner(u"org.mpris.MediaPlayer2.tunedeckdemo"_s);
    PlayerPlaylists playlists(connection, owner, std::make_shared<PlayingPlaylist>(u"tunedeckdemo"_s));
    QVERIFY(onAnotherThread([&] { return playlists.readIds(); }).has_value());
    tell(u"silent on"_s);
    forgetCalls();
    auto ids = std::async(std::launch::async, [&] { return playlists.readIds(); });
    QTRY_COMPARE(calls().size(), 1);
    QElapsedTimer sinceLetGo;
    sinceLetGo.start();
    playlists.stopWaiting();
    QVERIFY(!ids.get().has_value());
    QVERIFY(sinceLetGo.elapsed() < 500);

    tell(u"silent off"_s);
    forgetCalls();
    QVERIFY(!playlists.readIds().has_value());
    QVERIFY(!playlists.readActive().has_value());
    QCOMPARE(calls(), QStringList());
}

void PlayerPlaylistsTest::theProgramsEndDoesNotWaitForASilentPlayer()
{
    startPlayer({});
    startConnector();
    m_connector->setSelectedPlaylist(option(2));
    tell(u"silent on"_s);
    forgetCalls();
    m_connector->loadPlaylists();
    m_connector->playSelectedPlaylist();
    const QString asked = u"GetAll org.mpris.MediaPlayer2.Playlists"_s;
    QTRY_COMPARE(calls().count(asked), 2);
    QElapsedTimer sinceTheEnd;
    sinceTheEnd.start();
    m_connector.reset();
    m_music.reset();
    qInfo("ended after %lld ms", sinceTheEnd.elapsed());
    QVERIFY(sinceTheEnd.elapsed() < 500);
    QCOMPARE(m_launcher.launches, 0);
}

void PlayerPlaylistsTest::aChangeOfPlayerDoesNotWaitForASilentOne()
{
    startPlayer({});
    startConnector();
    tell(u"silent on"_s);
    m_connector->loadPlaylists();
    const DemoPlayerProcess other(
        *m_bus, m_bus->connect(u"other"_s), {u"--play"_s, u"--name"_s, u"other"_s, u"--do"_s, u"playlists 3"_s});
    QVERIFY(other.isReady());
    QElapsedTimer sinceTheChange;
    sinceTheChange.start();
    m_defaults->setValue(u"FollowedPlayer"_s, u"other"_s);
    QTRY_COMPARE(m_connector->playlistOptions().size(), 3);
    QVERIFY(sinceTheChange.elapsed() < 900);
    QDBusConnection::disconnectFromBus(u"other"_s);
}

void PlayerPlaylistsTest::aPlaylistIsPlayedOncePlayingHasStopped_data()
{
    QTest::addColumn<QStringList>("lines");
    QTest::addColumn<QStringList>("commands");
    const QString activation = u"ActivatePlaylist "_s + playlistPath + u'2';
    QTest::newRow("playing") << QStringList() << QStringList{u"Pause"_s, activation};
    QTest::newRow("paused") << QStringList{u"pause"_s} << QStringList{activation};
    QTest::newRow("stopped") << QStringList{u"stop"_s} << QStringList{activation};
    QTest::newRow("playing what cannot be paused")
        << QStringList{u"cannot CanPause on"_s} << QStringList{u"Stop"_s, activation};
}

void PlayerPlaylistsTest::aPlaylistIsPlayedOncePlayingHasStopped()
{
    QFETCH(const QStringList, lines);
    startPlayer(lines);
    startConnector();
    m_connector->setSelectedPlaylist(option(2));
    m_connector->playSelectedPlaylist();
    QTRY_VERIFY(!commands().filter(u"ActivatePlaylist"_s).isEmpty());
    QTEST(commands(), "commands");
    QTRY_COMPARE(m_music->playerState(), PlayerState::playing);
    m_connector->loadPlaylists();
    QTRY_COMPARE(m_connector->selectedPlaylist(), std::optional(option(2)));
}

void PlayerPlaylistsTest::thePlaylistThatPlaysIsNotPlayedAgain()
{
    startPlayer({});
    startConnector();
    QCOMPARE(m_connector->selectedPlaylist(), std::optional(option(0)));
    m_connector->playSelectedPlaylist();
    QTRY_VERIFY(calls().contains(u"GetAll org.mpris.MediaPlayer2.Playlists"_s));
    QVERIFY(finishBackgroundJobs(*m_connector));
    QVERIFY(comesToRest());
    QCOMPARE(commands(), QStringList());
}

/// The playlists are loaded as the player comes, before its track is believed.
void PlayerPlaylistsTest::thePlaylistOfAPlayerThatComesPausedIsSelected()
{
    startMusic();
    m_connector = std::make_unique<MusicConnector>(*m_music, m_windowActivation);
    startPlayer({u"pause"_s});
    QTRY_VERIFY(!m_connector->playlistOptions().isEmpty());
    QVERIFY(finishBackgroundJobs(*m_connector));
    QCOMPARE(m_connector->selectedPlaylist(), std::optional(option(0)));
}

void PlayerPlaylistsTest::thePlaylistOnViewInAStoppedPlayerIsPlayed()
{
    const QString activation = u"ActivatePlaylist "_s + playlistPath + u'2';
    startPlayer({u"stop"_s, u"viewed 2"_s});
    startConnector();
    QCOMPARE(m_connector->selectedPlaylist(), std::nullopt);
    play(2);
    QCOMPARE(commands(), QStringList{activation});
    QTRY_COMPARE(m_music->playerState(), PlayerState::playing);
    // It plays now, whatever is on view.
    tell(u"viewed 1"_s);
    play(2);
    QCOMPARE(commands(), QStringList{activation});
    m_connector->loadPlaylists();
    QVERIFY(finishBackgroundJobs(*m_connector));
    QCOMPARE(m_connector->selectedPlaylist(), std::optional(option(2)));
    tell(u"stop"_s);
    QTRY_COMPARE(m_music->playerState(), PlayerState::stopped);
    play(2);
    QCOMPARE(commands(), QStringList(2, activation));
}

void PlayerPlaylistsTest::aPlaylistOnViewWhileAnotherPlaysIsPlayed()
{
    const QString activation = u"ActivatePlaylist "_s + playlistPath;
    startPlayer({u"viewed 2"_s});
    startConnector();
    play(3);
    QCOMPARE(commands(), (QStringList{u"Pause"_s, activation + u'3'}));
    // The view has not followed, so it says nothing about the music.
    play(2);
    QCOMPARE(commands().filter(u"ActivatePlaylist"_s), (QStringList{activation + u'3', activation + u'2'}));
    play(2);
    QCOMPARE(commands().filter(u"ActivatePlaylist"_s), (QStringList{activation + u'3', activation + u'2'}));
}

void PlayerPlaylistsTest::strawberrysPlaylistOnViewIsPlayed_data()
{
    QTest::addColumn<QString>("name");
    QTest::newRow("Strawberry") << u"strawberry"_s;
    QTest::newRow("Clementine") << u"clementine"_s;
}

void PlayerPlaylistsTest::strawberrysPlaylistOnViewIsPlayed()
{
    QFETCH(const QString, name);
    startPlayer({u"viewed 2"_s}, name);
    startConnector();
    QCOMPARE(m_connector->selectedPlaylist(), std::nullopt);
    play(2);
    QCOMPARE(commands(), (QStringList{u"Pause"_s, u"ActivatePlaylist "_s + playlistPath + u'2'}));
}

void PlayerPlaylistsTest::aPlaylistThatWasNeverListedIsNotPlayed()
{
    startPlayer({});
    startConnector();
    QVERIFY(!onAnotherThread([this] { return m_music->playPlaylist(option(2).id + 1); }));
    QCOMPARE(commands(), QStringList());
    QVERIFY(onAnotherThread([this] { return m_music->playPlaylist(option(2).id); }));
}

void PlayerPlaylistsTest::aPlayerThatTakesNoCommandsIsSentNone()
{
    startPlayer({u"cannot CanControl on"_s});
    startConnector();
    QVERIFY(!onAnotherThread([this] { return m_music->playPlaylist(option(2).id); }));
    QCOMPARE(commands(), QStringList());
}

void PlayerPlaylistsTest::aMusicThatDoesNotRunIsLaunchedInstead()
{
    startMusic();
    QVERIFY(!onAnotherThread([this] { return m_music->playPlaylist(7); }));
    QTRY_COMPARE(m_launcher.launches, 1);
}

void PlayerPlaylistsTest::aPlaylistChosenBeforeThePlayerIsThereIsPlayedThen()
{
    startMusic();
    m_connector = std::make_unique<MusicConnector>(*m_music, m_windowActivation);
    const QString chosen = playlistPath + u'2';
    m_connector->setSelectedPlaylist(PlaylistOption{playlistId(chosen), u"Chosen"_s});
    m_connector->playSelectedPlaylist();
    QTRY_COMPARE(m_launcher.launches, 1);
    startPlayer({u"stop"_s});
    QTRY_COMPARE(commands(), QStringList{u"ActivatePlaylist "_s + chosen});
    QTRY_COMPARE(m_music->playerState(), PlayerState::playing);
}

} // namespace tunedeck

TUNEDECK_TEST(tunedeck::PlayerPlaylistsTest, QGuiApplication)
#include "PlayerPlaylistsTest.moc"
