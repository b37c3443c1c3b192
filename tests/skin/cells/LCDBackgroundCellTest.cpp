// SPDX-License-Identifier: MIT
#include "skin/cells/LCDBackgroundCell.h"

#include "skin/Picture.h"
#include "support/registerTest.h"

#include <QApplication>
#include <QRegularExpression>
#include <QTest>

namespace tunedeck {

namespace {
constexpr QSize panel(220, 52);
constexpr double middle = 110;

Picture drawn(bool dark, double scale = 1)
{
    return {panel, scale,
        [&](QPainter &painter) { LCDBackgroundCell().draw(painter, QRectF({}, panel), {.isDark = dark}); }};
}
} // namespace

/// All expected colors are worked out by hand from the layers, bottom to top: bezel, glass (232, 235, 207), its outline
/// of 20 %, in the dark scan lines of 10 %, inner shadow, gloss, inner edge.
class LCDBackgroundCellTest : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void init() { QTest::failOnWarning(QRegularExpression(QStringLiteral(".*"))); }

    void theGlassIsAsPaleInTheDarkAsInTheLight()
    {
        QVERIFY(isNear(drawn(false).at(middle, 20.5), QColor(226, 228, 201)));
        QVERIFY(isNear(drawn(true).at(middle, 21.5), QColor(227, 229, 202)));
    }

    void theGlossFadesAndEndsInTheMiddle()
    {
        const Picture picture = drawn(false);
        QVERIFY(isNear(picture.at(middle, 40.5), QColor(242, 243, 228)));
        // White of 10.6 % above, black of 2.5 % below.
        QVERIFY(isNear(picture.at(middle, 26.5), QColor(235, 237, 212)));
        QVERIFY(isNear(picture.at(middle, 25.5), QColor(226, 229, 201)));
    }

    void inTheDarkTheGlossIsWeaker() { QVERIFY(isNear(drawn(true).at(middle, 41.5), QColor(233, 235, 209))); }

    void inTheDarkTheGlossBegins2PointsInside()
    {
        // At scale 2, 1.25 to 1.75 points above the lower edge, there is no gloss yet, which would take 1 % more.
        const QColor outside = drawn(true, 2).at(middle, 1.75);
        QVERIFY(isNear(outside, QColor(232, 235, 207)));
    }

    void inTheDarkTheGlossBeginsOnAWholePixelAtAFractionalScale()
    {
        // Two pixels above the lower edge. In full, it takes as much there as three pixels further up.
        for (const double scale : {1.25, 1.5}) {
            const Picture picture = drawn(true, scale);
            QCOMPARE(picture.at(middle, 2.5 / scale), picture.at(middle, 5.5 / scale));
        }
    }

    void inTheDarkEverySecondPointHasAScanLine()
    {
        for (const double scale : {1.0, 2.0}) {
            const Picture picture = drawn(true, scale);
            QVERIFY(isNear(picture.at(middle, 20.25), QColor(204, 207, 182)));
            QVERIFY(isNear(picture.at(middle, 20.75), QColor(204, 207, 182)));
            QVERIFY(isNear(picture.at(middle, 21.25), QColor(227, 229, 202)));
            QVERIFY(isNear(picture.at(middle, 21.75), QColor(227, 229, 202)));
            QVERIFY(isNear(picture.at(middle, 22.25), QColor(204, 207, 182)));
        }
    }

    void inTheLightThereAreNoScanLines()
    {
        const Picture picture = drawn(false);
        QVERIFY(isNear(picture.at(middle, 20.5), picture.at(middle, 21.5)));
    }

    void theInnerEdgeIsHalfAPointOf25PercentOrInTheDarkOf30()
    {
        const Picture light = drawn(false, 2);
        QVERIFY(isNear(light.at(1.25, 20.25), QColor(135, 137, 120), 2));
        const Picture dark = drawn(true, 2);
        QVERIFY(isNear(dark.at(1.25, 21.25), QColor(129, 131, 115), 2));
    }

    void theShadowHugsTheTop()
    {
        const Picture picture = drawn(false);
        QVERIFY(isNear(picture.at(middle, 50.5), QColor(189, 190, 185), 2));
        QVERIFY(isNear(picture.at(middle, 1.5), QColor(177, 179, 158)));
    }

    void theBezelIsDarkAboveAndLitBelow()
    {
        const Picture small = drawn(false);
        // Half of each row is covered by the glass's outline.
        QVERIFY(isNear(small.at(middle, 51.5), grey(2, 122), 2));
        QVERIFY(isNear(small.at(middle, 0.5), grey(215, 174), 2));
    }

    void atScale2TheBezelIsLitLessAndTheOutlineIsThinner()
    {
        const Picture large = drawn(false, 2);
        QVERIFY(isNear(large.at(middle, 51.75), grey(1, 107)));
        QVERIFY(isNear(large.at(middle, 51.25), grey(2, 122), 2));
        QVERIFY(isNear(large.at(middle, 0.25), grey(254, 102), 2));
    }

    void inTheDarkTheBezelIsLitLeastAtEveryScale()
    {
        QVERIFY(isNear(drawn(true, 2).at(middle, 0.25), grey(254, 39), 6));
        QVERIFY(drawn(true, 1).at(middle, 0.5).alpha() < 70);
    }

    void theCornersAreRound()
    {
        const Picture picture = drawn(false);
        QCOMPARE(picture.at(0.5, 0.5).alpha(), 0);
        QCOMPARE(picture.at(0.5, 51.5).alpha(), 0);
        QCOMPARE(picture.at(219.5, 51.5).alpha(), 0);
        QCOMPARE(picture.at(5.5, 46.5).alpha(), 255);
        // The glass bends away from its outline and from its inner edge here.
        QVERIFY(isNear(picture.at(1.5, 3.5), QColor(163, 164, 145, 252), 3));
    }

    void drawingLeavesNothingBehind()
    {
        const LCDBackgroundCell cell;
        const auto draw = [&](QPainter &painter) { cell.draw(painter, QRectF({}, panel), {.isDark = true}); };
        const Picture first(panel, 1, draw);
        QCOMPARE(Picture(panel, 1, draw), first);
    }
};

} // namespace tunedeck

TUNEDECK_TEST(tunedeck::LCDBackgroundCellTest, QApplication)
#include "LCDBackgroundCellTest.moc"
