// SPDX-License-Identifier: MIT
#include "music/mpris/SeekRamp.h"
#include "support/registerTest.h"

#include <QRegularExpression>
#include <QTest>

namespace tunedeck {

namespace {

using Direction = SeekRamp::Direction;

QList<double> targets(SeekRamp ramp, int count)
{
    QList<double> result;
    for (int i = 0; i < count; ++i) {
        result.append(ramp.advance());
    }
    return result;
}

} // namespace

class SeekRampTest : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void init() { QTest::failOnWarning(QRegularExpression(QStringLiteral(".*"))); }

    void itsStepsGrowFromTwoToEightSeconds()
    {
        QCOMPARE(targets(SeekRamp(Direction::Forward, 100, 600), 10),
            QList<double>({102, 105, 109, 114, 120, 127, 135, 143, 151, 159}));
        QCOMPARE(targets(SeekRamp(Direction::Backward, 100, 600), 10),
            QList<double>({98, 95, 91, 86, 80, 73, 65, 57, 49, 41}));
    }

    void itKeepsTheFractionOfThePlaceItStartsFrom()
    {
        QCOMPARE(targets(SeekRamp(Direction::Forward, 0.25, 600), 3), QList<double>({2.25, 5.25, 9.25}));
    }

    void itEndsASecondBeforeTheEnd()
    {
        QCOMPARE(targets(SeekRamp(Direction::Forward, 90, 100), 5), QList<double>({92, 95, 99, 99, 99}));
    }

    void itEndsAtTheStart()
    {
        QCOMPARE(targets(SeekRamp(Direction::Backward, 6, 100), 4), QList<double>({4, 1, 0, 0}));
    }

    void aTrackShorterThanASecondHasNowhereToGoButItsStart()
    {
        QCOMPARE(targets(SeekRamp(Direction::Forward, 0, 0.5), 2), QList<double>({0, 0}));
    }

    void aPlaceBeyondTheEndIsLeftAtOnce()
    {
        QCOMPARE(targets(SeekRamp(Direction::Forward, 3'600, 100), 1), QList<double>({99}));
    }

    void withoutALengthItGoesOn()
    {
        QCOMPARE(targets(SeekRamp(Direction::Forward, 3'600, std::nullopt), 2), QList<double>({3'602, 3'605}));
        QCOMPARE(targets(SeekRamp(Direction::Forward, 999'999'998, std::nullopt), 2),
            QList<double>({999'999'999, 999'999'999}));
    }

    void itKnowsItsDirection()
    {
        QCOMPARE(SeekRamp(Direction::Forward, 0, 100).direction(), Direction::Forward);
        QCOMPARE(SeekRamp(Direction::Backward, 0, 100).direction(), Direction::Backward);
    }

    void aTargetIsDueFourTimesASecond() { QCOMPARE(SeekRamp::interval, std::chrono::milliseconds(250)); }
};

} // namespace tunedeck

TUNEDECK_TEST(tunedeck::SeekRampTest, QCoreApplication)
#include "SeekRampTest.moc"
