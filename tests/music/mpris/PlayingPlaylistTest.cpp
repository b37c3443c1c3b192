// SPDX-License-Identifier: MIT
#include "music/mpris/PlayingPlaylist.h"
#include "support/registerTest.h"

#include <QCoreApplication>
#include <QRegularExpression>
#include <QTest>

using namespace tunedeck;
using namespace Qt::StringLiterals;

namespace {

const std::optional<PlaylistDetails> one{{.id = 1, .path = u"/one"_s, .name = u"One"_s}};
const std::optional<PlaylistDetails> two{{.id = 2, .path = u"/two"_s, .name = u"Two"_s}};

} // namespace

class PlayingPlaylistTest : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void init() { QTest::failOnWarning(QRegularExpression(u".*"_s)); }

    void theActivePlaylistPlaysUnlessThePlayerIsStopped()
    {
        PlayingPlaylist playing(u"rhythmbox"_s);
        QVERIFY(playing.judge(one) == std::nullopt);
        playing.setStopped(false);
        QVERIFY(playing.judge(one) == one);
        QVERIFY(playing.judge(std::nullopt) == std::nullopt);
        playing.noteActivated(*two);
        QVERIFY(playing.judge(one) == one);
        QVERIFY(!playing.isKnown());
        playing.noteActiveFollows();
        QVERIFY(playing.isKnown());
        QVERIFY(playing.judge(one) == one);
    }

    void onlyAnActivePlaylistOfAStoppedPlayerIsSuspect()
    {
        PlayingPlaylist playing(u"rhythmbox"_s);
        QVERIFY(playing.isSuspect(one));
        QVERIFY(!playing.isSuspect(std::nullopt));
        playing.setStopped(false);
        QVERIFY(!playing.isSuspect(one));
        playing.setStopped(true);
        playing.noteActiveIsOnView();
        QVERIFY(!playing.isSuspect(one));
    }

    void wherePlaylistsAreOnViewTheOneActivatedLastPlaysUntilTheStop()
    {
        PlayingPlaylist playing(u"unknown"_s);
        playing.setStopped(false);
        playing.noteActiveIsOnView();
        QVERIFY(playing.isKnown());
        QVERIFY(playing.judge(one) == std::nullopt);
        playing.noteActivated(*two);
        QVERIFY(playing.judge(one) == two);
        playing.setStopped(true);
        QVERIFY(playing.judge(one) == std::nullopt);
        playing.setStopped(false);
        QVERIFY(playing.judge(one) == std::nullopt);
        // A stopped player that was told to play begins after its answer.
        playing.setStopped(true);
        playing.noteActivated(*two);
        playing.setStopped(true);
        playing.setStopped(false);
        QVERIFY(playing.judge(one) == two);
    }

    void strawberrysAndClementinesAreOnViewFromTheStart()
    {
        for (const QString &family : {u"strawberry"_s, u"clementine"_s}) {
            PlayingPlaylist playing(family);
            playing.setStopped(false);
            QVERIFY(playing.isKnown());
            QVERIFY(playing.judge(one) == std::nullopt);
        }
    }
};

TUNEDECK_TEST(PlayingPlaylistTest, QCoreApplication)
#include "PlayingPlaylistTest.moc"
