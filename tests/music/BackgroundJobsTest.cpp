// SPDX-License-Identifier: MIT
#include "music/BackgroundJobs.h"
#include "support/ScriptedMusicApplication.h"
#include "support/elapse.h"
#include "support/finishBackgroundJobs.h"
#include "support/registerTest.h"

#include <QCoreApplication>
#include <QSignalSpy>
#include <QTest>

using namespace Qt::StringLiterals;

namespace tunedeck {

namespace {

/// A Music that counts how often it is asked to end the waits of its background reads.
class EndsWaits : public ScriptedMusicApplication {
public:
    void endBackground() override
    {
        ++ends;
        ScriptedMusicApplication::endBackground();
    }

    int ends = 0;
};

} // namespace

/// The jobs alone; MusicConnectorPlaylistsTest tests what the connector makes of them.
class BackgroundJobsTest : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void init() { QTest::failOnWarning(QRegularExpression(u".*"_s)); }

    void aLoadReportsTheOptionsAndTheirSource()
    {
        ScriptedMusicApplication music;
        music.answerInBackground({.playlistIds = QVariantList{1, 2},
            .playlistNames = QVariantList{u"A"_s, u"B"_s},
            .playlistSource = PlaylistSource::files,
            .hasMorePlaylists = true});
        BackgroundJobs jobs(music);
        QList<LoadedPlaylists> loads;
        connect(&jobs, &BackgroundJobs::playlistsLoaded, this,
            [&loads](const LoadedPlaylists &playlists) { loads.append(playlists); });
        jobs.loadPlaylists();
        QVERIFY(finishBackgroundJobs(jobs));
        QCOMPARE(loads.size(), 1);
        QCOMPARE(loads.constFirst().options, (QList<PlaylistOption>{{1, u"A"_s}, {2, u"B"_s}}));
        QCOMPARE(loads.constFirst().source, PlaylistSource::files);
        QVERIFY(loads.constFirst().hasMore);
        QCOMPARE(loads.constFirst().current, std::nullopt);
    }

    void aCancelledJobReportsNothing()
    {
        ScriptedMusicApplication music;
        music.answerInBackground({.playlistIds = QVariantList{1}, .playlistNames = QVariantList{u"A"_s}});
        BackgroundJobs jobs(music);
        const QSignalSpy loaded(&jobs, &BackgroundJobs::playlistsLoaded);
        const QSignalSpy outputs(&jobs, &BackgroundJobs::audioOutputNamesRead);
        music.holdBackground();
        jobs.loadPlaylists();
        jobs.readAudioOutputNames();
        jobs.cancel();
        music.releaseBackground();
        QVERIFY(finishBackgroundJobs(jobs));
        QCOMPARE(loaded.count(), 0);
        QCOMPARE(outputs.count(), 0);
        // The next one is not taken for one under way.
        jobs.loadPlaylists();
        QVERIFY(finishBackgroundJobs(jobs));
        QCOMPARE(loaded.count(), 1);
    }

    void ofManyReadsOfTheOutputsOneFollowsTheOneUnderWay()
    {
        ScriptedMusicApplication music;
        BackgroundJobs jobs(music);
        const QSignalSpy outputs(&jobs, &BackgroundJobs::audioOutputNamesRead);
        music.holdBackground();
        jobs.readAudioOutputNames();
        jobs.readAudioOutputNames();
        jobs.readAudioOutputNames();
        music.releaseBackground();
        QVERIFY(finishBackgroundJobs(jobs));
        QTRY_COMPARE(outputs.count(), 2);
        QCOMPARE(music.backgroundReads(), QStringList(2, u"currentAirPlayDevices"_s));
    }

    void anotherReadOfTheOutputsAfterACancelledOneReports()
    {
        ScriptedMusicApplication music;
        BackgroundJobs jobs(music);
        const QSignalSpy outputs(&jobs, &BackgroundJobs::audioOutputNamesRead);
        music.holdBackground();
        jobs.readAudioOutputNames();
        QTRY_COMPARE(music.backgroundReads().size(), 1);
        jobs.readAudioOutputNames();
        jobs.cancel();
        // It does not wait for the cancelled one, and none follows it.
        jobs.readAudioOutputNames();
        QTRY_COMPARE(music.backgroundReads().size(), 2);
        music.releaseBackground();
        QVERIFY(finishBackgroundJobs(jobs));
        QCOMPARE(outputs.count(), 1);
        QCOMPARE(music.backgroundReads(), QStringList(2, u"currentAirPlayDevices"_s));
    }

    void ofThePlaylistsChosenWhileOneIsAboutToBePlayedTheLastFollows_data()
    {
        QTest::addColumn<QList<qint64>>("chosen");
        QTest::addColumn<QStringList>("reads");
        const QStringList first{u"currentPlaylist"_s, u"playPlaylist 1"_s};
        QTest::newRow("another") << QList<qint64>{1, 2}
                                 << first + QStringList{u"currentPlaylist"_s, u"playPlaylist 2"_s};
        QTest::newRow("two others") << QList<qint64>{1, 2, 3}
                                    << first + QStringList{u"currentPlaylist"_s, u"playPlaylist 3"_s};
        QTest::newRow("the same") << QList<qint64>{1, 1} << first;
        QTest::newRow("another, then the same") << QList<qint64>{1, 2, 1} << first;
    }
    void ofThePlaylistsChosenWhileOneIsAboutToBePlayedTheLastFollows()
    {
        QFETCH(const QList<qint64>, chosen);
        ScriptedMusicApplication music;
        BackgroundJobs jobs(music);
        music.holdBackground();
        for (const qint64 id : chosen) {
            jobs.playPlaylist(id);
        }
        music.releaseBackground();
        QVERIFY(finishBackgroundJobs(jobs));
        QTEST(music.backgroundReads(), "reads");
    }

    void aPlaylistThatWaitsIsNotPlayedAfterMusicQuit()
    {
        ScriptedMusicApplication music;
        BackgroundJobs jobs(music);
        music.holdBackground();
        jobs.playPlaylist(1);
        jobs.playPlaylist(2);
        jobs.cancel();
        music.releaseBackground();
        QVERIFY(finishBackgroundJobs(jobs));
        QVERIFY(!music.backgroundReads().contains(u"playPlaylist 2"_s));
    }

    void aPlaylistChosenWhileMusicDoesNotRunIsPlayedWhenItsListIsLoaded_data()
    {
        QTest::addColumn<QVariantList>("ids");
        QTest::addColumn<bool>("isInTime");
        QTest::addColumn<bool>("isPlayed");
        QTest::newRow("in time") << QVariantList{1, 2} << true << true;
        QTest::newRow("too late") << QVariantList{1, 2} << false << false;
        QTest::newRow("not in the list") << QVariantList{1, 3} << true << false;
    }
    void aPlaylistChosenWhileMusicDoesNotRunIsPlayedWhenItsListIsLoaded()
    {
        QFETCH(const QVariantList, ids);
        QFETCH(const bool, isInTime);
        QFETCH(const bool, isPlayed);
        ScriptedMusicApplication music;
        BackgroundJobs jobs(music);
        music.setRunning(false);
        jobs.playPlaylist(2);
        QVERIFY(finishBackgroundJobs(jobs));
        QCOMPARE(music.backgroundReads(), (QStringList{u"currentPlaylist"_s, u"playPlaylist 2"_s}));
        auto *patience = jobs.findChild<QTimer *>(u"awaitedPlaylistTimer"_s);
        QVERIFY(patience);
        QCOMPARE(patience->interval(), 10'000);
        if (!isInTime) {
            QVERIFY(elapse(*patience));
        }
        music.clearRecords();
        music.answerInBackground({.playlistIds = ids, .playlistNames = QVariantList{u"A"_s, u"B"_s}});
        music.setRunning(true);
        jobs.loadPlaylists();
        QVERIFY(finishBackgroundJobs(jobs));
        QCOMPARE(music.backgroundReads().contains(u"playPlaylist 2"_s), isPlayed);
        // It is played once.
        music.clearRecords();
        jobs.loadPlaylists();
        QVERIFY(finishBackgroundJobs(jobs));
        QVERIFY(!music.backgroundReads().contains(u"playPlaylist 2"_s));
    }

    void aPlaylistThatALaunchedMusicListsLateIsPlayed_data()
    {
        QTest::addColumn<std::optional<QVariantList>>("firstIds");
        QTest::newRow("the list grows") << std::optional(QVariantList{1});
        QTest::newRow("the first read is not answered") << std::optional<QVariantList>();
    }
    void aPlaylistThatALaunchedMusicListsLateIsPlayed()
    {
        QFETCH(const std::optional<QVariantList>, firstIds);
        const QVariantList names{u"A"_s, u"B"_s};
        ScriptedMusicApplication music;
        BackgroundJobs jobs(music);
        music.setRunning(false);
        jobs.playPlaylist(2);
        QVERIFY(finishBackgroundJobs(jobs));
        music.answerInBackground({.playlistIds = firstIds, .playlistNames = names});
        music.setRunning(true);
        jobs.loadPlaylists();
        QVERIFY(finishBackgroundJobs(jobs));
        music.clearRecords();
        music.answerInBackground({.playlistIds = QVariantList{1, 2}, .playlistNames = names});
        auto *nextLoad = jobs.findChild<QTimer *>(u"nextLoadTimer"_s);
        QVERIFY(nextLoad);
        QVERIFY(elapse(*nextLoad));
        QVERIFY(finishBackgroundJobs(jobs));
        QVERIFY(music.backgroundReads().contains(u"playPlaylist 2"_s));
        QVERIFY(!nextLoad->isActive());
    }

    void aPlaylistThatIsNotListedInTimeIsNotLookedForAgain()
    {
        ScriptedMusicApplication music;
        BackgroundJobs jobs(music);
        music.setRunning(false);
        jobs.playPlaylist(2);
        QVERIFY(finishBackgroundJobs(jobs));
        music.answerInBackground({.playlistIds = QVariantList{1}, .playlistNames = QVariantList{u"A"_s}});
        music.setRunning(true);
        jobs.loadPlaylists();
        QVERIFY(finishBackgroundJobs(jobs));
        QVERIFY(elapse(*jobs.findChild<QTimer *>(u"awaitedPlaylistTimer"_s)));
        music.clearRecords();
        auto *nextLoad = jobs.findChild<QTimer *>(u"nextLoadTimer"_s);
        QVERIFY(nextLoad && elapse(*nextLoad));
        QVERIFY(finishBackgroundJobs(jobs));
        QCOMPARE(music.backgroundReads(), QStringList());
        QVERIFY(!nextLoad->isActive());
    }

    void aRunningMusicIsNotAskedAgainForAPlaylist()
    {
        ScriptedMusicApplication music;
        music.answerInBackground({.playlistIds = QVariantList{1}, .playlistNames = QVariantList{u"A"_s}});
        BackgroundJobs jobs(music);
        jobs.playPlaylist(1);
        QVERIFY(finishBackgroundJobs(jobs));
        music.clearRecords();
        jobs.loadPlaylists();
        QVERIFY(finishBackgroundJobs(jobs));
        QVERIFY(!music.backgroundReads().contains(u"playPlaylist 1"_s));
    }

    void thePlaylistThatMusicPlaysIsNotPlayedAgain()
    {
        ScriptedMusicApplication music;
        music.answerInBackground({.currentPlaylist = MusicPlaylist{.id = 1}});
        BackgroundJobs jobs(music);
        jobs.playPlaylist(1);
        QVERIFY(finishBackgroundJobs(jobs));
        QCOMPARE(music.backgroundReads(), QStringList{u"currentPlaylist"_s});
    }

    void theDestructorEndsTheWaitOfAJob()
    {
        EndsWaits music;
        music.answerInBackground({.playlistIds = QVariantList{1}, .playlistNames = QVariantList{u"A"_s}});
        {
            BackgroundJobs jobs(music);
            music.holdBackground();
            jobs.loadPlaylists();
            QTRY_COMPARE(music.backgroundReads().size(), 1);
            QCOMPARE(music.ends, 0);
        }
        QCOMPARE(music.ends, 1);
        // The job ran to its end before the destructor returned.
        QCOMPARE(music.backgroundReads(), (QStringList{u"currentPlaylist"_s, u"playlistIds"_s, u"playlistNames"_s}));
    }
};

} // namespace tunedeck

TUNEDECK_TEST(tunedeck::BackgroundJobsTest, QCoreApplication)
#include "BackgroundJobsTest.moc"
