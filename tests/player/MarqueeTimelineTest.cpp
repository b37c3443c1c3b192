// SPDX-License-Identifier: MIT
#include "player/MarqueeTimeline.h"
#include "support/registerTest.h"

#include <QApplication>
#include <QRegularExpression>
#include <QTest>

#include <cmath>

using namespace tunedeck;
using namespace std::chrono_literals;

namespace {
const QString a = QStringLiteral("A");
const QString b = QStringLiteral("B");
const QString c = QStringLiteral("C");
/// Sixty characters: 600 points, and 650 with the five spaces around it.
const QString wide(60, u'w');
const QString paddedWide = u' ' + wide + QStringLiteral("    ");

/// A field of 200 × 20 points in which each character is 10 points wide. The roll takes 1.667 s; the scroll of the
/// padded wide string 650 / 30 = 21.667 s.
struct Marquee {
    explicit Marquee(const QStringList &strings)
    {
        timeline.layOut({200, 20}, at(0ms));
        timeline.setDisplayStrings(strings, at(0ms));
    }

    [[nodiscard]] static MarqueeTimeline::TimePoint at(std::chrono::milliseconds time)
    {
        return MarqueeTimeline::TimePoint(time);
    }

    [[nodiscard]] std::vector<MarqueeLabel> labels(std::chrono::milliseconds time)
    {
        timeline.proceedTo(at(time));
        return timeline.labels(at(time));
    }

    [[nodiscard]] QString shown(std::chrono::milliseconds time) { return labels(time).front().text; }

    /// The labels' left edges in a scroll, to a thousandth of a point.
    [[nodiscard]] QList<double> lefts(std::chrono::milliseconds time) { return edges(time, &QRectF::left); }
    [[nodiscard]] QList<double> tops(std::chrono::milliseconds time) { return edges(time, &QRectF::top); }

    [[nodiscard]] bool isMoving(std::chrono::milliseconds time)
    {
        timeline.proceedTo(at(time));
        return timeline.isMoving(at(time));
    }

    void click(std::chrono::milliseconds time) { timeline.advance(at(time)); }

    MarqueeTimeline timeline{[](const QString &text) { return 10.0 * static_cast<double>(text.size()); },
        [](const QString &text, double width) { return text.left(static_cast<qsizetype>(width / 10) - 1) + u'~'; }};

private:
    [[nodiscard]] QList<double> edges(std::chrono::milliseconds time, double (QRectF::*edge)() const)
    {
        QList<double> result;
        for (const MarqueeLabel &label : labels(time)) {
            result.append(std::round((label.frame.*edge)() * 1000) / 1000);
        }
        return result;
    }
};
} // namespace

class MarqueeTimelineTest : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void init() { QTest::failOnWarning(QRegularExpression(QStringLiteral(".*"))); }

    void oneFittingStringNeverMoves()
    {
        Marquee marquee({a});
        for (const auto time : {0ms, 4000ms, 5667ms, 3'600'000ms}) {
            const std::vector<MarqueeLabel> labels = marquee.labels(time);
            QCOMPARE(labels.size(), 1U);
            QCOMPARE(labels[0].text, a);
            QCOMPARE(labels[0].frame, QRectF(0, 0, 200, 20));
            QVERIFY(!marquee.isMoving(time));
            QVERIFY(!marquee.timeline.nextChange(Marquee::at(time)));
        }
    }

    void aStringAsWideAsTheFieldFits()
    {
        Marquee marquee({QString(20, u'x')});
        QCOMPARE(marquee.labels(0ms).size(), 1U);
        QCOMPARE(marquee.shown(0ms), QString(20, u'x'));
    }

    void nothingToShowShowsNothing()
    {
        Marquee marquee({});
        QVERIFY(marquee.labels(1h).empty());
        marquee.click(1h);
        QVERIFY(marquee.labels(1h).empty());
        marquee.timeline.setDisplayStrings({a, b}, Marquee::at(1h));
        QCOMPARE(marquee.shown(1h), a);
        marquee.timeline.setDisplayStrings({}, Marquee::at(1h));
        QVERIFY(marquee.labels(1h).empty());
        QVERIFY(!marquee.timeline.nextChange(Marquee::at(1h)));
    }

    void shortStringsStandAndRoll()
    {
        Marquee marquee({a, b, c});
        QCOMPARE(marquee.tops(0ms), (QList<double>{0, 20}));
        QCOMPARE(marquee.lefts(0ms), (QList<double>{0, 0}));
        QCOMPARE(marquee.labels(0ms)[1].text, b);
        QCOMPARE(marquee.tops(4000ms), (QList<double>{0, 20}));
        QVERIFY(!marquee.isMoving(3999ms));
        QVERIFY(marquee.isMoving(4000ms));
        QCOMPARE(marquee.timeline.nextChange(Marquee::at(4000ms)), Marquee::at(5667ms));
        QVERIFY(marquee.isMoving(5666ms));
        QVERIFY(!marquee.isMoving(5667ms));
        QCOMPARE(marquee.shown(5667ms), b);
        QCOMPARE(marquee.tops(5667ms), (QList<double>{0, 20}));
        QCOMPARE(marquee.timeline.nextChange(Marquee::at(5667ms)), Marquee::at(9667ms));
        QCOMPARE(marquee.shown(11'334ms), c);
        QCOMPARE(marquee.labels(11'334ms)[1].text, a);
        QCOMPARE(marquee.shown(17'001ms), a);
    }

    void theRollEasesOut()
    {
        // After half the time the curve with the control points (0, 0) and (0.58, 1) is at 0.68464 of the way.
        Marquee marquee({a, b});
        const std::vector<MarqueeLabel> labels = marquee.labels(4000ms);
        const auto halfway = Marquee::at(4000ms) + 833'500us;
        marquee.timeline.proceedTo(halfway);
        const std::vector<MarqueeLabel> rolled = marquee.timeline.labels(halfway);
        QVERIFY(std::abs(rolled[0].frame.y() + 13.693) < 0.01);
        QVERIFY(std::abs(rolled[1].frame.y() - 6.307) < 0.01);
        QCOMPARE(rolled[0].frame.x(), labels[0].frame.x());
    }

    void oneWideStringStandsAndScrollsForEver()
    {
        Marquee marquee({wide});
        QCOMPARE(marquee.shown(0ms), paddedWide);
        QCOMPARE(marquee.labels(0ms)[1].text, paddedWide);
        QCOMPARE(marquee.labels(0ms)[0].frame, QRectF(0, 0, 650, 20));
        QCOMPARE(marquee.lefts(4000ms), (QList<double>{0, 650}));
        QCOMPARE(marquee.lefts(5000ms), (QList<double>{-30, 620}));
        QCOMPARE(marquee.lefts(14'000ms), (QList<double>{-300, 350}));
        QCOMPARE(marquee.tops(14'000ms), (QList<double>{0, 0}));
        QCOMPARE(marquee.lefts(25'666ms), (QList<double>{-649.98, 0.02}));
        // The cycle begins again 4 s and 21.667 s later.
        QCOMPARE(marquee.lefts(25'667ms), (QList<double>{0, 650}));
        QVERIFY(!marquee.isMoving(29'666ms));
        QVERIFY(marquee.isMoving(29'667ms));
        QCOMPARE(marquee.shown(3'600'000ms), paddedWide);
    }

    void aWideStringScrollsOnceAndThenRolls()
    {
        Marquee marquee({wide, a});
        QCOMPARE(marquee.lefts(5000ms), (QList<double>{-30, 620}));
        // The scroll ends at 25.667 s; the second rest of 4 s and the roll of 1.667 s at 31.334 s.
        QCOMPARE(marquee.shown(25'667ms), paddedWide);
        QCOMPARE(marquee.labels(25'667ms)[1].text, a);
        QCOMPARE(marquee.lefts(25'667ms), (QList<double>{0, 0}));
        QCOMPARE(marquee.tops(29'666ms), (QList<double>{0, 20}));
        QVERIFY(marquee.isMoving(29'668ms));
        QVERIFY(marquee.tops(29'700ms).first() < 0);
        QCOMPARE(marquee.lefts(29'700ms), (QList<double>{0, 0}));
        QCOMPARE(marquee.shown(31'334ms), a);
        QCOMPARE(marquee.labels(31'334ms)[1].text, paddedWide);
        // The short one rolls by 37.001 s, and the wide one scrolls again.
        QCOMPARE(marquee.shown(37'001ms), paddedWide);
        QVERIFY(std::abs(marquee.lefts(42'001ms)[0] + 30) < 0.05);
    }

    void anHourKeepsTheSequence()
    {
        // A round is 31.334 s for the wide string and 5.667 s for each other one: 42.668 s.
        Marquee marquee({wide, a, b});
        for (auto round = 0ms; round < 1h; round += 42'668ms) {
            QCOMPARE(marquee.shown(round + 100ms), paddedWide);
            QCOMPARE(marquee.lefts(round + 5000ms).size(), 2);
            QVERIFY(std::abs(marquee.lefts(round + 5000ms)[0] + 30) < 1);
            QCOMPARE(marquee.shown(round + 31'400ms), a);
            QCOMPARE(marquee.shown(round + 37'100ms), b);
        }
    }

    void whatWasNotWatchedIsCaughtUpAtOnce()
    {
        Marquee marquee({a, b, c});
        // 635 times 5.667 s are 3598.545 s; 635 is 2 more than a multiple of 3.
        QCOMPARE(marquee.shown(3'598'600ms), c);
        QCOMPARE(marquee.timeline.nextChange(Marquee::at(3'598'600ms)), Marquee::at(3'602'545ms));
    }

    void nothingEverPausesIt()
    {
        Marquee marquee({QStringLiteral("a"), QStringLiteral("b")});
        QVERIFY(!marquee.timeline.isPaused());
        marquee.click(4500ms);
        QVERIFY(!marquee.timeline.isPaused());
    }

    void theSameListChangesNothing()
    {
        Marquee marquee({a, b});
        marquee.timeline.proceedTo(Marquee::at(7000ms));
        marquee.timeline.setDisplayStrings({a, b}, Marquee::at(7000ms));
        QCOMPARE(marquee.shown(7000ms), b);
        QCOMPARE(marquee.timeline.nextChange(Marquee::at(7000ms)), Marquee::at(9667ms));
        marquee.timeline.setDisplayStrings({b, c}, Marquee::at(7000ms));
        QCOMPARE(marquee.shown(7000ms), b);
        QCOMPARE(marquee.timeline.nextChange(Marquee::at(7000ms)), Marquee::at(11'000ms));
    }

    void aDifferentListStartsAtItsFirstStringAndScrollsIt()
    {
        Marquee marquee({wide, a});
        // The wide string has scrolled already and waits to roll.
        marquee.timeline.proceedTo(Marquee::at(26'000ms));
        marquee.timeline.setDisplayStrings({wide, b}, Marquee::at(26'000ms));
        QCOMPARE(marquee.lefts(31'000ms), (QList<double>{-30, 620}));
    }

    void aClickWhileAStringStandsRotatesTheList()
    {
        Marquee marquee({a, b, c});
        marquee.click(1000ms);
        QCOMPARE(marquee.timeline.displayStrings(), (QStringList{b, c, a}));
        QCOMPARE(marquee.shown(1000ms), b);
        QCOMPARE(marquee.timeline.nextChange(Marquee::at(1000ms)), Marquee::at(5000ms));
    }

    void aClickWhileAStringRollsRotatesTheList()
    {
        Marquee marquee({a, b, c});
        marquee.click(4500ms);
        QCOMPARE(marquee.shown(4500ms), b);
        QCOMPARE(marquee.tops(4500ms), (QList<double>{0, 20}));
        QCOMPARE(marquee.shown(10'167ms), c);
    }

    void theRotationCountsFromTheFirstEntry()
    {
        Marquee marquee({a, b, c});
        marquee.click(6000ms);
        QCOMPARE(marquee.timeline.displayStrings(), (QStringList{b, c, a}));
        QCOMPARE(marquee.shown(6000ms), b);
        QCOMPARE(marquee.timeline.nextChange(Marquee::at(6000ms)), Marquee::at(10'000ms));
        marquee.click(6100ms);
        QCOMPARE(marquee.shown(6100ms), c);
    }

    void aClickInEachPhaseOfAWideStringShowsTheNext_data()
    {
        QTest::addColumn<int>("milliseconds");
        QTest::newRow("first stand") << 1000;
        QTest::newRow("scroll") << 10'000;
        QTest::newRow("second stand") << 27'000;
        QTest::newRow("roll") << 30'000;
    }

    void aClickInEachPhaseOfAWideStringShowsTheNext()
    {
        QFETCH(const int, milliseconds);
        const std::chrono::milliseconds time(milliseconds);
        Marquee marquee({wide, a});
        marquee.click(time);
        QCOMPARE(marquee.shown(time), a);
        QCOMPARE(marquee.labels(time)[1].text, paddedWide);
        // The wide string scrolls again when its turn comes.
        QCOMPARE(marquee.lefts(time + 5667ms + 5000ms), (QList<double>{-30, 620}));
    }

    void aClickOnOneWideStringStartsItAgain()
    {
        for (const auto time : {1000ms, 10'000ms}) {
            Marquee marquee({wide});
            marquee.click(time);
            QCOMPARE(marquee.timeline.displayStrings(), (QStringList{wide}));
            QCOMPARE(marquee.lefts(time), (QList<double>{0, 650}));
            QCOMPARE(marquee.timeline.nextChange(Marquee::at(time)), Marquee::at(time + 4000ms));
        }
    }

    void aClickOnOneFittingStringLeavesItStanding()
    {
        Marquee marquee({a});
        marquee.click(1000ms);
        QCOMPARE(marquee.shown(1000ms), a);
        QVERIFY(!marquee.timeline.nextChange(Marquee::at(1000ms)));
    }

    void equalStringsDoNotReactToClicks()
    {
        Marquee marquee({a, a});
        for (const auto time : {1000ms, 4500ms}) {
            marquee.click(time);
            QCOMPARE(marquee.timeline.nextChange(Marquee::at(0ms)), Marquee::at(4000ms));
        }
        QVERIFY(marquee.isMoving(4600ms));
        QCOMPARE(marquee.shown(5667ms), a);
    }

    void aNewSizeStartsTheStringOnShowAgain()
    {
        Marquee marquee({a, b, c});
        marquee.timeline.layOut({100, 30}, Marquee::at(6000ms));
        QCOMPARE(marquee.shown(6000ms), b);
        QCOMPARE(marquee.labels(6000ms)[1].frame, QRectF(0, 30, 100, 30));
        QCOMPARE(marquee.timeline.nextChange(Marquee::at(6000ms)), Marquee::at(10'000ms));
        QCOMPARE(marquee.shown(11'667ms), c);
    }

    void aNewSizeLetsAWideStringScrollAgainOrFit()
    {
        Marquee marquee({wide, a});
        marquee.timeline.layOut({200, 20}, Marquee::at(27'000ms));
        QCOMPARE(marquee.lefts(32'000ms), (QList<double>{-30, 620}));
        marquee.timeline.layOut({600, 20}, Marquee::at(32'000ms));
        QCOMPARE(marquee.shown(32'000ms), wide);
        QCOMPARE(marquee.shown(37'667ms), a);
    }

    void aFieldWithoutAreaShowsNothing()
    {
        Marquee marquee({a, b});
        marquee.timeline.layOut({0, 20}, Marquee::at(100ms));
        QVERIFY(marquee.labels(1h).empty());
        marquee.timeline.layOut({200, 20}, Marquee::at(1h));
        QCOMPARE(marquee.shown(1h), a);
    }

    void withReducedMotionAWideStringStandsElided()
    {
        Marquee marquee({wide});
        marquee.timeline.setMotionReduced(true, Marquee::at(0ms));
        QCOMPARE(marquee.shown(0ms), QString(19, u'w') + u'~');
        QCOMPARE(marquee.labels(1h).front(), marquee.labels(0ms).front());
        QVERIFY(!marquee.timeline.nextChange(Marquee::at(1h)));
    }

    void withReducedMotionStringsTakeTurnsWithoutMoving()
    {
        Marquee marquee({a, wide, b});
        marquee.timeline.setMotionReduced(true, Marquee::at(0ms));
        for (std::chrono::milliseconds time = 0ms; time < 30s; time += 37ms) {
            QVERIFY(!marquee.isMoving(time));
            QCOMPARE(marquee.tops(time).front(), 0.0);
        }
        Marquee fresh({a, wide, b});
        fresh.timeline.setMotionReduced(true, Marquee::at(0ms));
        QCOMPARE(fresh.shown(3999ms), a);
        QCOMPARE(fresh.shown(4000ms), QString(19, u'w') + u'~');
        QCOMPARE(fresh.shown(8000ms), b);
        QCOMPARE(fresh.shown(12'000ms), a);
    }

    void withReducedMotionATextThatWasElidedTooWideStandsToo()
    {
        MarqueeTimeline timeline([](const QString &text) { return 10.0 * static_cast<double>(text.size()); },
            [](const QString &text, double) { return text.left(21); });
        timeline.layOut({200, 20}, Marquee::at(0ms));
        timeline.setDisplayStrings({wide}, Marquee::at(0ms));
        timeline.setMotionReduced(true, Marquee::at(0ms));
        QVERIFY(!timeline.nextChange(Marquee::at(0ms)));
    }

    void motionThatIsAllowedAgainBeginsWithADwell()
    {
        Marquee marquee({wide});
        marquee.timeline.setMotionReduced(true, Marquee::at(0ms));
        marquee.timeline.setMotionReduced(false, Marquee::at(10s));
        QCOMPARE(marquee.shown(10s), paddedWide);
        QVERIFY(!marquee.isMoving(13'999ms));
        QVERIFY(marquee.isMoving(14'001ms));
    }
};

TUNEDECK_TEST(MarqueeTimelineTest, QApplication)
#include "MarqueeTimelineTest.moc"
