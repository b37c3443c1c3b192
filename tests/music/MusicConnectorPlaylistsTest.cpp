// SPDX-License-Identifier: MIT
#include "ConnectorObserver.h"
#include "platform/WindowActivation.h"
#include "support/ScriptedMusicApplication.h"
#include "support/finishBackgroundJobs.h"
#include "support/registerTest.h"

#include <QElapsedTimer>
#include <QGuiApplication>
#include <QRegularExpression>
#include <QTest>

using namespace tunedeck;
using namespace Qt::StringLiterals;

namespace {

using BackgroundAnswers = ScriptedMusicApplication::BackgroundAnswers;

BackgroundAnswers twoPlaylists()
{
    return {.playlistIds = QVariantList{1, 2}, .playlistNames = QVariantList{u"A"_s, u"B"_s}};
}

const QStringList idsAlone = {u"currentPlaylist"_s, u"playlistIds"_s};
const QStringList aWholeLoad = {u"currentPlaylist"_s, u"playlistIds"_s, u"playlistNames"_s};

} // namespace

class MusicConnectorPlaylistsTest : public QObject {
    Q_OBJECT

private:
    const WindowActivation m_windowActivation;

private Q_SLOTS:
    void init() { QTest::failOnWarning(QRegularExpression(u".*"_s)); }

    void thePlaylistsAreLoadedAtStartInMusicsOrder()
    {
        ScriptedMusicApplication music;
        music.answerInBackground(
            {.playlistIds = QVariantList{3, QVariant::fromValue<qlonglong>(9223372036854775807), 2},
                .playlistNames = QVariantList{u"Zappa"_s, QString(), u"Abba"_s}});
        MusicConnector connector(music, m_windowActivation);
        ConnectorObserver observer(connector);
        QCOMPARE(connector.playlistOptions(), QList<PlaylistOption>());

        QTRY_COMPARE(connector.playlistOptions(),
            QList<PlaylistOption>({{3, u"Zappa"_s}, {9223372036854775807, QString()}, {2, u"Abba"_s}}));
        QCOMPARE(observer.take(), QStringList({u"playlistOptions [Zappa, , Abba]"_s, u"selectedPlaylist none"_s}));
        QCOMPARE(music.backgroundReads(), aWholeLoad);
    }

    void theListIsAsLongAsTheShorterColumn_data()
    {
        QTest::addColumn<QVariantList>("ids");
        QTest::addColumn<QVariantList>("names");
        QTest::newRow("fewer names") << QVariantList{1, 2, 3} << QVariantList{u"A"_s, u"B"_s};
        QTest::newRow("fewer ids") << QVariantList{1, 2} << QVariantList{u"A"_s, u"B"_s, u"C"_s};
    }
    void theListIsAsLongAsTheShorterColumn()
    {
        QFETCH(QVariantList, ids);
        QFETCH(QVariantList, names);
        ScriptedMusicApplication music;
        music.answerInBackground({.playlistIds = ids, .playlistNames = names});
        const MusicConnector connector(music, m_windowActivation);
        QTRY_COMPARE(connector.playlistOptions(), QList<PlaylistOption>({{1, u"A"_s}, {2, u"B"_s}}));
    }

    void thePlaylistThatMusicPlaysIsSelected_data()
    {
        QTest::addColumn<std::optional<MusicPlaylist>>("current");
        QTest::addColumn<std::optional<PlaylistOption>>("selected");
        QTest::newRow("in the list") << std::optional(MusicPlaylist{.id = 2, .name = u"Other name"_s})
                                     << std::optional(PlaylistOption{2, u"B"_s});
        QTest::newRow("the later of two equal ids")
            << std::optional(MusicPlaylist{.id = 1, .name = {}}) << std::optional(PlaylistOption{1, u"C"_s});
        QTest::newRow("not in the list") << std::optional(MusicPlaylist{.id = 9, .name = u"A"_s})
                                         << std::optional<PlaylistOption>();
        QTest::newRow("without id") << std::optional(MusicPlaylist{.id = {}, .name = u"A"_s})
                                    << std::optional<PlaylistOption>();
        QTest::newRow("none") << std::optional<MusicPlaylist>() << std::optional<PlaylistOption>();
    }
    void thePlaylistThatMusicPlaysIsSelected()
    {
        QFETCH(std::optional<MusicPlaylist>, current);
        ScriptedMusicApplication music;
        music.answerInBackground({.currentPlaylist = current,
            .playlistIds = QVariantList{1, 2, 1},
            .playlistNames = QVariantList{u"A"_s, u"B"_s, u"C"_s}});
        MusicConnector connector(music, m_windowActivation);
        connector.setSelectedPlaylist(PlaylistOption{7, u"picked before"_s});
        QTRY_COMPARE(connector.playlistOptions().size(), 3);
        QTEST(connector.selectedPlaylist(), "selected");
    }

    void aFailedLoadLeavesTheListAsItWas_data()
    {
        QTest::addColumn<std::optional<QVariantList>>("ids");
        QTest::addColumn<std::optional<QVariantList>>("names");
        QTest::addColumn<QStringList>("reads");
        const auto texts = std::optional(QVariantList{u"A"_s, u"B"_s});
        QTest::newRow("ids not answered") << std::optional<QVariantList>() << texts << idsAlone;
        QTest::newRow("a text among the ids") << std::optional(QVariantList{1, u"2"_s}) << texts << idsAlone;
        QTest::newRow("a fraction among the ids") << std::optional(QVariantList{1.5, 2}) << texts << idsAlone;
        QTest::newRow("names not answered")
            << std::optional(QVariantList{1}) << std::optional<QVariantList>() << aWholeLoad;
        QTest::newRow("a number among the names")
            << std::optional(QVariantList{1}) << std::optional(QVariantList{u"A"_s, 2}) << aWholeLoad;
    }
    void aFailedLoadLeavesTheListAsItWas()
    {
        QFETCH(std::optional<QVariantList>, ids);
        QFETCH(std::optional<QVariantList>, names);
        QFETCH(QStringList, reads);
        ScriptedMusicApplication music;
        music.answerInBackground(twoPlaylists());
        MusicConnector connector(music, m_windowActivation);
        QTRY_COMPARE(connector.playlistOptions().size(), 2);
        ConnectorObserver observer(connector);

        music.answerInBackground({.playlistIds = ids, .playlistNames = names});
        music.clearRecords();
        connector.loadPlaylists();
        QTRY_COMPARE(music.backgroundReads(), reads);

        // The failure ended the load, so the next one begins and is announced next.
        music.answerInBackground({.playlistIds = QVariantList{5}, .playlistNames = QVariantList{u"E"_s}});
        const auto isReloaded = [&] {
            connector.loadPlaylists();
            return connector.playlistOptions() == QList<PlaylistOption>({{5, u"E"_s}});
        };
        QTRY_VERIFY(isReloaded());
        QCOMPARE(observer.take().first(), u"playlistOptions [E]"_s);
    }

    void aSecondLoadWhileOneIsUnderWayIsNotBegun()
    {
        ScriptedMusicApplication music;
        music.answerInBackground(twoPlaylists());
        music.holdBackground();
        MusicConnector connector(music, m_windowActivation);
        ConnectorObserver observer(connector);
        const QStringList announced = {u"playlistOptions [A, B]"_s, u"selectedPlaylist none"_s};
        connector.loadPlaylists();
        connector.loadPlaylists();
        music.releaseBackground();
        QTRY_COMPARE(observer.lines(), announced);
        QVERIFY(finishBackgroundJobs(connector));
        QCOMPARE(music.backgroundReads(), aWholeLoad);
        QCOMPARE(observer.take(), announced);

        connector.loadPlaylists();
        QTRY_COMPARE(observer.lines(), announced);
    }

    void withMusicNotRunningNothingIsLoaded()
    {
        ScriptedMusicApplication music;
        music.setRunning(false);
        MusicConnector connector(music, m_windowActivation);
        connector.loadPlaylists();
        QVERIFY(finishBackgroundJobs(connector));
        QCOMPARE(music.backgroundReads(), QStringList());
    }

    void aLoadUnderWayWhenMusicQuitDoesNotFillTheListAgain()
    {
        ScriptedMusicApplication music;
        music.answerInBackground(twoPlaylists());
        music.holdBackground();
        const MusicConnector connector(music, m_windowActivation);
        QTRY_COMPARE(music.backgroundReads().size(), 1);

        music.quit();
        music.setRunning(true);
        music.releaseBackground();
        QTRY_COMPARE(music.backgroundReads(), aWholeLoad);
        QVERIFY(finishBackgroundJobs(connector));
        QCOMPARE(connector.playlistOptions(), QList<PlaylistOption>());
    }

    void aMusicThatQuitAndLaunchedMeanwhileIsLoadedAnew()
    {
        ScriptedMusicApplication music;
        music.answerInBackground(twoPlaylists());
        music.holdBackground();
        MusicConnector connector(music, m_windowActivation);
        QTRY_COMPARE(music.backgroundReads().size(), 1);
        ConnectorObserver observer(connector);

        music.quit();
        music.launch();
        (void)observer.take();
        music.releaseBackground();
        QTRY_COMPARE(connector.playlistOptions().size(), 2);
        QTRY_COMPARE(music.backgroundReads().size(), 6);
        QVERIFY(finishBackgroundJobs(connector));
        QCOMPARE(observer.take(), QStringList({u"playlistOptions [A, B]"_s, u"selectedPlaylist none"_s}));
    }

    void theConnectorEndsOnlyAfterItsBackgroundReads()
    {
        ScriptedMusicApplication music;
        music.answerInBackground(twoPlaylists());
        music.holdBackground();
        {
            const MusicConnector connector(music, m_windowActivation);
            QTRY_COMPARE(music.backgroundReads().size(), 1);
            music.releaseBackground();
        }
        QCOMPARE(music.backgroundReads(), aWholeLoad);
    }

    void theEndOfTheConnectorLetsGoWhoWaitsForMusic()
    {
        ScriptedMusicApplication music;
        music.holdBackground();
        QElapsedTimer sinceTheEnd;
        {
            const MusicConnector connector(music, m_windowActivation);
            QTRY_COMPARE(music.backgroundReads().size(), 1);
            sinceTheEnd.start();
        }
        QVERIFY(sinceTheEnd.elapsed() < 1'000);
    }

    void theSelectedPlaylistIsPlayedUnlessMusicPlaysIt_data()
    {
        QTest::addColumn<std::optional<MusicPlaylist>>("current");
        QTest::addColumn<QStringList>("calls");
        const QStringList played = {u"currentPlaylist"_s, u"playPlaylist 2"_s};
        const QStringList notPlayed = {u"currentPlaylist"_s};
        QTest::newRow("another is current") << std::optional(MusicPlaylist{.id = 1, .name = u"B"_s}) << played;
        QTest::newRow("it is current") << std::optional(MusicPlaylist{.id = 2, .name = u"A"_s}) << notPlayed;
        QTest::newRow("the current one has no id") << std::optional(MusicPlaylist{.id = {}, .name = u"B"_s}) << played;
        QTest::newRow("none is current") << std::optional<MusicPlaylist>() << played;
    }
    void theSelectedPlaylistIsPlayedUnlessMusicPlaysIt()
    {
        QFETCH(std::optional<MusicPlaylist>, current);
        QFETCH(QStringList, calls);
        ScriptedMusicApplication music;
        MusicConnector connector(music, m_windowActivation);
        QTRY_COMPARE(music.backgroundReads(), idsAlone);
        music.clearRecords();
        music.answerInBackground({.currentPlaylist = current});
        connector.setSelectedPlaylist(PlaylistOption{2, u"B"_s});
        connector.playSelectedPlaylist();
        QTRY_COMPARE(music.backgroundReads(), calls);
        QVERIFY(finishBackgroundJobs(connector));
        QCOMPARE(music.backgroundReads(), calls);
        QCOMPARE(music.commands(), QStringList());
    }

    void withoutASelectionNothingIsPlayed()
    {
        ScriptedMusicApplication music;
        music.setRunning(false);
        MusicConnector connector(music, m_windowActivation);
        connector.playSelectedPlaylist();
        QVERIFY(finishBackgroundJobs(connector));
        QCOMPARE(music.backgroundReads(), QStringList());
    }

    void aMusicThatDoesNotRunIsAskedToPlayAllTheSame()
    {
        ScriptedMusicApplication music;
        music.setRunning(false);
        MusicConnector connector(music, m_windowActivation);
        connector.setSelectedPlaylist(PlaylistOption{3, u"C"_s});
        connector.playSelectedPlaylist();
        QTRY_COMPARE(music.backgroundReads(), QStringList({u"currentPlaylist"_s, u"playPlaylist 3"_s}));
    }

    void aPlaylistChosenWhileAnotherIsAboutToBePlayedFollowsIt()
    {
        ScriptedMusicApplication music;
        MusicConnector connector(music, m_windowActivation);
        QTRY_COMPARE(music.backgroundReads(), idsAlone);
        music.clearRecords();
        music.holdBackground();
        connector.setSelectedPlaylist(PlaylistOption{1, u"A"_s});
        connector.playSelectedPlaylist();
        QTRY_COMPARE(music.backgroundReads().size(), 1);
        connector.setSelectedPlaylist(PlaylistOption{2, u"B"_s});
        connector.playSelectedPlaylist();
        music.releaseBackground();
        QVERIFY(finishBackgroundJobs(connector));
        QCOMPARE(music.backgroundReads(),
            QStringList({u"currentPlaylist"_s, u"playPlaylist 1"_s, u"currentPlaylist"_s, u"playPlaylist 2"_s}));
    }

    void aPlaylistChosenWhileMusicDoesNotRunIsPlayedOnceItIsThere()
    {
        ScriptedMusicApplication music;
        music.setRunning(false);
        MusicConnector connector(music, m_windowActivation);
        connector.setSelectedPlaylist(PlaylistOption{2, u"B"_s});
        connector.playSelectedPlaylist();
        QVERIFY(finishBackgroundJobs(connector));
        music.clearRecords();
        music.answerInBackground({.playlistIds = QVariantList{1, 2}, .playlistNames = QVariantList{u"A"_s, u"B"_s}});
        music.launch();
        QVERIFY(finishBackgroundJobs(connector));
        QCOMPARE(music.backgroundReads(),
            QStringList({u"currentPlaylist"_s, u"playlistIds"_s, u"playlistNames"_s, u"currentPlaylist"_s,
                u"playPlaylist 2"_s}));
    }

    void aMusicThatQuitWhileAPlaylistWasAboutToBePlayedDoesNotKeepTheNextFromIt()
    {
        ScriptedMusicApplication music;
        MusicConnector connector(music, m_windowActivation);
        QTRY_COMPARE(music.backgroundReads(), idsAlone);
        music.holdBackground();
        connector.setSelectedPlaylist(PlaylistOption{1, u"A"_s});
        connector.playSelectedPlaylist();
        QTRY_COMPARE(music.backgroundReads().size(), 3);
        music.quit();
        connector.setSelectedPlaylist(PlaylistOption{2, u"B"_s});
        connector.playSelectedPlaylist();
        QTRY_COMPARE(music.backgroundReads().size(), 4);
        music.releaseBackground();
        QTRY_VERIFY(music.backgroundReads().contains(u"playPlaylist 2"_s));
    }

    void aSelectionIsAnnouncedAlsoWhenItIsTheSame()
    {
        ScriptedMusicApplication music;
        music.setRunning(false);
        MusicConnector connector(music, m_windowActivation);
        ConnectorObserver observer(connector);
        connector.setSelectedPlaylist(PlaylistOption{1, u"A"_s});
        connector.setSelectedPlaylist(PlaylistOption{1, u"A"_s});
        QCOMPARE(observer.take(), QStringList({u"selectedPlaylist A"_s, u"selectedPlaylist A"_s}));
        QCOMPARE(connector.selectedPlaylist(), std::optional(PlaylistOption{1, u"A"_s}));
    }
};

TUNEDECK_TEST(MusicConnectorPlaylistsTest, QGuiApplication)
#include "MusicConnectorPlaylistsTest.moc"
