// SPDX-License-Identifier: MIT
#include "music/BackgroundJobs.h"
#include "support/ScriptedMusicApplication.h"
#include "support/finishBackgroundJobs.h"
#include "support/registerTest.h"

#include <QCoreApplication>
#include <QSignalSpy>
#include <QTest>

using namespace Qt::StringLiterals;

namespace tunedeck {

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
            .playlistSource = PlaylistSource::files});
        BackgroundJobs jobs(music);
        QList<LoadedPlaylists> loads;
        connect(&jobs, &BackgroundJobs::playlistsLoaded, this,
            [&loads](const LoadedPlaylists &playlists) { loads.append(playlists); });
        jobs.loadPlaylists();
        QVERIFY(finishBackgroundJobs(jobs));
        QCOMPARE(loads.size(), 1);
        QCOMPARE(loads.constFirst().options, (QList<PlaylistOption>{{1, u"A"_s}, {2, u"B"_s}}));
        QCOMPARE(loads.constFirst().source, PlaylistSource::files);
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
};

} // namespace tunedeck

TUNEDECK_TEST(tunedeck::BackgroundJobsTest, QCoreApplication)
#include "BackgroundJobsTest.moc"
