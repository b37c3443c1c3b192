// SPDX-License-Identifier: MIT
#include "music/mpris/PositionClock.h"
#include "support/registerTest.h"

#include <QRegularExpression>
#include <QTest>

namespace tunedeck {

namespace {

/// `milliseconds` after the test began.
Instant at(int milliseconds)
{
    return Instant(std::chrono::hours(1)) + Milliseconds(milliseconds);
}

PositionClock clockRunningFrom(double seconds)
{
    PositionClock clock;
    clock.setRunning(true, at(0));
    clock.sample(seconds, at(0));
    return clock;
}

} // namespace

class PositionClockTest : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void init() { QTest::failOnWarning(QRegularExpression(QStringLiteral(".*"))); }

    void aNewClockStandsAtTheStart()
    {
        const PositionClock clock;
        QCOMPARE(clock.position(at(0)), 0.0);
        QCOMPARE(clock.position(at(5'000)), 0.0);
    }

    void aRunningClockGoesOnByItself()
    {
        const PositionClock clock = clockRunningFrom(10);
        QCOMPARE(clock.position(at(0)), 10.0);
        QCOMPARE(clock.position(at(1)), 10.001);
        QCOMPARE(clock.position(at(2'500)), 12.5);
        QCOMPARE(clock.position(at(60'000)), 70.0);
    }

    void aPauseHoldsThePosition()
    {
        PositionClock clock = clockRunningFrom(10);
        clock.setRunning(false, at(1'500));
        QCOMPARE(clock.position(at(1'500)), 11.5);
        QCOMPARE(clock.position(at(9'000)), 11.5);
        clock.setRunning(true, at(9'000));
        QCOMPARE(clock.position(at(9'250)), 11.75);
    }

    void aPauseThatIsLearntOfLaterCountsFromItsBeginning()
    {
        PositionClock clock = clockRunningFrom(10);
        QCOMPARE(clock.position(at(1'150)), 11.15);
        clock.setRunning(false, at(1'000));
        QCOMPARE(clock.position(at(1'150)), 11.0);
    }

    void aRateAppliesFromWhenItIsSet()
    {
        PositionClock clock = clockRunningFrom(10);
        clock.setRate(2, at(1'000));
        QCOMPARE(clock.position(at(1'000)), 11.0);
        QCOMPARE(clock.position(at(2'000)), 13.0);
        clock.setRate(0.5, at(2'000));
        QCOMPARE(clock.position(at(4'000)), 14.0);
        clock.setRate(0, at(4'000));
        QCOMPARE(clock.position(at(9'000)), 14.0);
    }

    void aRateMovesNoStandingClock()
    {
        PositionClock clock;
        clock.setPosition(10, at(0));
        clock.setRate(100, at(0));
        QCOMPARE(clock.position(at(1'000)), 10.0);
    }

    void aSampleWithinTheToleranceMovesNothing()
    {
        PositionClock clock = clockRunningFrom(10);
        clock.sample(12.1, at(1'000));
        QCOMPARE(clock.position(at(1'000)), 11.0);
        clock.sample(9.9, at(1'000));
        QCOMPARE(clock.position(at(1'000)), 11.0);
    }

    void aSampleBeyondTheToleranceMovesTheClock()
    {
        PositionClock clock = clockRunningFrom(10);
        clock.sample(12.25, at(1'000));
        QCOMPARE(clock.position(at(1'000)), 12.25);
        clock.sample(10, at(2'500));
        QCOMPARE(clock.position(at(2'500)), 10.0);
    }

    void rhythmboxsWholeSecondsDoNotMakeItHop()
    {
        PositionClock clock = clockRunningFrom(10.9);
        clock.sample(10, at(0));
        QCOMPARE(clock.position(at(0)), 10.9);
        clock.sample(12, at(2'000));
        QCOMPARE(clock.position(at(2'000)), 12.9);
        clock.sample(16, at(6'050));
        QCOMPARE(clock.position(at(6'050)), 16.95);
    }

    void mpDris2sOldPositionsDoNotSetItBack()
    {
        PositionClock clock = clockRunningFrom(10);
        clock.sample(10.1, at(2'000));
        QCOMPARE(clock.position(at(2'000)), 12.0);
        QVERIFY(clock.isInDoubt());
        clock.sample(13.5, at(4'000));
        QVERIFY(!clock.isInDoubt());
        clock.sample(14.1, at(6'000));
        clock.sample(16, at(8'000));
        QCOMPARE(clock.position(at(8'000)), 18.0);
        QVERIFY(clock.isInDoubt());
    }

    void aSmallStepBackIsBelievedOnceThreeSamplesShowIt()
    {
        PositionClock clock = clockRunningFrom(10);
        clock.sample(10, at(2'000));
        clock.sample(12, at(4'000));
        QCOMPARE(clock.position(at(4'000)), 14.0);
        clock.sample(14, at(6'000));
        QCOMPARE(clock.position(at(6'000)), 14.0);
        QVERIFY(!clock.isInDoubt());
    }

    void aSmallStepBackOfAStandingClockIsBelievedAtOnce()
    {
        PositionClock clock = clockRunningFrom(10);
        clock.setRunning(false, at(2'000));
        clock.sample(10, at(3'000));
        QCOMPARE(clock.position(at(3'000)), 10.0);
    }

    void anAnnouncedJumpMovesTheClockAtOnce_data()
    {
        QTest::addColumn<double>("position");
        QTest::newRow("forwards") << 60.0;
        QTest::newRow("a little forwards") << 12.5;
        QTest::newRow("backwards") << 5.0;
        QTest::newRow("backwards beyond what can be an old position") << 9.4;
        QTest::newRow("to the start") << 0.0;
    }
    void anAnnouncedJumpMovesTheClockAtOnce()
    {
        QFETCH(double, position);
        PositionClock clock = clockRunningFrom(10);
        QVERIFY(clock.jump(position, at(2'000)));
        QCOMPARE(clock.position(at(2'000)), position);
        QVERIFY(clock.trustsTarget(at(2'000)));
    }

    void anAnnouncementOfWhereTheClockIsOrWasIsNoJump_data()
    {
        QTest::addColumn<double>("position");
        QTest::addColumn<bool>("isInDoubt");
        QTest::newRow("Sayonara, each second") << 12.0 << false;
        QTest::newRow("Sayonara, a little ahead") << 12.2 << false;
        QTest::newRow("mpDris2, a second old") << 11.0 << false;
        QTest::newRow("mpDris2, two seconds old") << 10.0 << true;
    }
    void anAnnouncementOfWhereTheClockIsOrWasIsNoJump()
    {
        QFETCH(double, position);
        QFETCH(bool, isInDoubt);
        PositionClock clock = clockRunningFrom(10);
        QVERIFY(!clock.jump(position, at(2'000)));
        QCOMPARE(clock.position(at(2'000)), 12.0);
        QVERIFY(!clock.trustsTarget(at(2'000)));
        QCOMPARE(clock.isInDoubt(), isInDoubt);
    }

    void aStandingClockTakesEveryAnnouncement()
    {
        PositionClock clock = clockRunningFrom(10);
        clock.setRunning(false, at(2'000));
        QVERIFY(clock.jump(11.5, at(3'000)));
        QCOMPARE(clock.position(at(3'000)), 11.5);
    }

    void theFirstSampleIsTakenAsItIs()
    {
        PositionClock clock;
        clock.sample(0.5, at(0));
        QCOMPARE(clock.position(at(0)), 0.5);
    }

    void oneSampleIsTakenAsItIsWhenThatIsAskedFor()
    {
        PositionClock clock = clockRunningFrom(10);
        clock.trustNextSample();
        clock.sample(11.3, at(1'000));
        QCOMPARE(clock.position(at(1'000)), 11.3);
        clock.sample(11, at(1'000));
        QCOMPARE(clock.position(at(1'000)), 11.3);
    }

    void samplesAreNotLookedAtForOneAndAHalfSecondsAfterATarget()
    {
        PositionClock clock = clockRunningFrom(10);
        clock.trustTarget(60, at(1'000));
        QVERIFY(clock.trustsTarget(at(1'000)));
        clock.sample(11, at(1'000));
        QCOMPARE(clock.position(at(1'000)), 60.0);
        clock.sample(0, at(2'499));
        QCOMPARE(clock.position(at(2'499)), 61.499);
        QVERIFY(clock.trustsTarget(at(2'499)));

        QVERIFY(!clock.trustsTarget(at(2'500)));
        clock.sample(12.5, at(2'500));
        QCOMPARE(clock.position(at(2'500)), 12.5);
    }

    void aSampleAskedForWaitsUntilTheTargetIsNoLongerTrusted()
    {
        PositionClock clock = clockRunningFrom(10);
        clock.trustNextSample();
        clock.trustTarget(60, at(0));
        clock.sample(10.5, at(500));
        clock.sample(61, at(1'500));
        QCOMPARE(clock.position(at(1'500)), 61.0);
    }

    void aCertainPositionEndsTheTrustInATarget()
    {
        PositionClock clock = clockRunningFrom(10);
        clock.trustTarget(60, at(0));
        clock.setPosition(0, at(100));
        QVERIFY(!clock.trustsTarget(at(100)));
        clock.sample(5, at(200));
        QCOMPARE(clock.position(at(200)), 5.0);
    }

    void aPositionIsNeverBelowZero()
    {
        PositionClock clock;
        clock.setPosition(-1, at(0));
        QCOMPARE(clock.position(at(0)), 0.0);
        clock.trustTarget(-0.1, at(0));
        QCOMPARE(clock.position(at(0)), 0.0);
        clock.setRunning(true, at(0));
        QCOMPARE(clock.position(at(-5'000)), 0.0);
    }
};

} // namespace tunedeck

TUNEDECK_TEST(tunedeck::PositionClockTest, QCoreApplication)
#include "PositionClockTest.moc"
