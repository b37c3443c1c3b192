// SPDX-License-Identifier: MIT
#include "music/mpris/PlayerModes.h"
#include "support/registerTest.h"

#include <QTest>

namespace tunedeck {

namespace {

PlayerReport report(std::optional<bool> shuffle, std::optional<LoopStatus> loopStatus = std::nullopt)
{
    PlayerReport report;
    report.shuffle = shuffle;
    report.loopStatus = loopStatus;
    return report;
}

/// Modes after a read of each of `shuffles`.
PlayerModes modesAfter(std::initializer_list<bool> shuffles)
{
    PlayerModes modes;
    for (const bool shuffle : shuffles) {
        modes.read(report(shuffle, LoopStatus::None));
    }
    return modes;
}

} // namespace

class PlayerModesTest : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void nothingIsKnownBeforeTheFirstRead()
    {
        const PlayerModes modes;
        QCOMPARE(modes.shuffle(), std::nullopt);
        QCOMPARE(modes.loopStatus(), std::nullopt);
        QVERIFY(!modes.isInDoubt());
    }

    void theFirstReadIsBelieved()
    {
        const PlayerModes modes = modesAfter({true});
        QCOMPARE(modes.shuffle(), true);
        QCOMPARE(modes.loopStatus(), LoopStatus::None);
        QVERIFY(!modes.isInDoubt());
    }

    void cmusQuietChangeIsBelievedOnceThreeReadsShowIt()
    {
        PlayerModes modes = modesAfter({false, true});
        QCOMPARE(modes.shuffle(), false);
        QVERIFY(modes.isInDoubt());
        modes.read(report(true));
        QCOMPARE(modes.shuffle(), false);
        modes.read(report(true));
        QCOMPARE(modes.shuffle(), true);
        QVERIFY(!modes.isInDoubt());
        QVERIFY(!modes.flips());
    }

    void mpvsShuffleThatGoesBackIsUnknown()
    {
        for (PlayerModes modes : {modesAfter({true, false, true}), modesAfter({true, false, false, true})}) {
            QVERIFY(modes.flips());
            QCOMPARE(modes.shuffle(), std::nullopt);
            QVERIFY(!modes.isInDoubt());
            modes.read(report(true));
            modes.read(report(false));
            modes.read(report(false));
            modes.read(report(false));
            QCOMPARE(modes.shuffle(), std::nullopt);
            QVERIFY(!modes.isInDoubt());
        }
    }

    void ofAPlayerWhoseShuffleFlipsOnlyAnAnnouncedLoopStatusIsBelieved()
    {
        PlayerModes modes = modesAfter({true, false, true});
        modes.read(report(true, LoopStatus::Track));
        QCOMPARE(modes.loopStatus(), LoopStatus::None);
        modes.announced(report(std::nullopt, LoopStatus::Playlist));
        QCOMPARE(modes.loopStatus(), LoopStatus::Playlist);
        QCOMPARE(modes.shuffle(), std::nullopt);
    }

    void totemsQuietChangeOfItsLoopStatusIsBelievedAtOnce()
    {
        PlayerModes modes;
        modes.read(report(std::nullopt, LoopStatus::None));
        modes.read(report(std::nullopt, LoopStatus::Playlist));
        QCOMPARE(modes.loopStatus(), LoopStatus::Playlist);
        QVERIFY(!modes.isInDoubt());
    }

    void anAnnouncementIsBelievedAtOnceAlsoOfAPlayerThatFlipped()
    {
        PlayerModes modes = modesAfter({true, false, true});
        modes.announced(report(false));
        QVERIFY(!modes.flips());
        QCOMPARE(modes.shuffle(), false);
    }

    void anAnnouncementEndsADoubt()
    {
        PlayerModes modes = modesAfter({false, true});
        modes.announced(report(true));
        QCOMPARE(modes.shuffle(), true);
        QVERIFY(!modes.isInDoubt());
        modes.read(report(true));
        QVERIFY(!modes.flips());
    }

    void whatWasAskedForIsBelievedAtOnce()
    {
        PlayerModes modes = modesAfter({false});
        modes.askedForShuffle(true);
        modes.read(report(true));
        QCOMPARE(modes.shuffle(), true);
        // The request is over: cmus' user may change it back.
        modes.read(report(false));
        QVERIFY(modes.isInDoubt());
        QCOMPARE(modes.shuffle(), true);
    }

    void modesThatThePlayerNoLongerListsAreUnknown()
    {
        PlayerModes modes = modesAfter({true});
        modes.read(report(std::nullopt));
        QCOMPARE(modes.shuffle(), std::nullopt);
        QCOMPARE(modes.loopStatus(), std::nullopt);
        modes.read(report(false, LoopStatus::Track));
        QCOMPARE(modes.shuffle(), false);
        QCOMPARE(modes.loopStatus(), LoopStatus::Track);
    }
};

} // namespace tunedeck

TUNEDECK_TEST(tunedeck::PlayerModesTest, QCoreApplication)
#include "PlayerModesTest.moc"
