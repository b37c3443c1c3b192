// SPDX-License-Identifier: MIT
#include "skin/cells/ClassicAudioProgressSliderCell.h"

#include "skin/Picture.h"
#include "support/registerTest.h"

#include <QApplication>
#include <QRegularExpression>
#include <QTest>

using namespace tunedeck;

namespace {
const QColor ink(53, 57, 42);
const QColor faintInk(53, 57, 42, 117);

/// The knob at the start, in the middle and at the end of a slider 200 points wide and 20 high.
constexpr QRectF atStart(0, 1.5, 17, 17);
constexpr QRectF halfway(91.5, 1.5, 17, 17);
constexpr QRectF atEnd(183, 1.5, 17, 17);

Picture bar(const QRectF &knob, double scale, bool enabled = true)
{
    return {QSize(200, 20), scale, [&knob, enabled](QPainter &painter) {
                ClassicAudioProgressSliderCell::drawBarInside(painter, QRectF(0, 8, 200, 4), knob, enabled);
            }};
}

Picture diamond(bool enabled)
{
    return {QSize(200, 20), 2,
        [enabled](QPainter &painter) { ClassicAudioProgressSliderCell::drawKnob(painter, halfway, enabled); }};
}
} // namespace

class ClassicAudioProgressSliderCellTest : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void init() { QTest::failOnWarning(QRegularExpression(QStringLiteral(".*"))); }

    void atAFractionalScaleTheFrameIsACrispPixel()
    {
        // 2 points in, on the device pixels 3 at scale 1.25 and at 1.5.
        for (const double scale : {1.25, 1.5}) {
            const Picture picture = bar(halfway, scale, false);
            QCOMPARE(picture.at(2.5 / scale, 10).alpha(), 0);
            QVERIFY(isNear(picture.at(3.5 / scale, 10), ink));
            QCOMPARE(picture.at(4.5 / scale, 10).alpha(), 0);
        }
    }

    void atHighContrastTheStripesAreBlack()
    {
        const Picture picture{QSize(200, 20), 1.25, [](QPainter &painter) {
                                  ClassicAudioProgressSliderCell::drawBarInside(
                                      painter, QRectF(0, 8, 200, 4), atEnd, true, true);
                              }};
        for (int column = 20; column < 200; ++column) {
            const QColor expected = column % 2 == 0 ? QColor(0, 0, 0) : QColor(0, 0, 0, 0);
            QCOMPARE(picture.at((column + 0.5) / 1.25, 10), expected);
        }
    }

    void atAFractionalScaleTheDotsAreCrispPixels()
    {
        for (const double scale : {1.25, 1.5}) {
            const Picture picture = bar(atEnd, scale);
            for (int column = 20; column < 200; ++column) {
                const int alpha = picture.at((column + 0.5) / scale, 10).alpha();
                QCOMPARE(alpha, column % 2 == 0 ? 117 : 0);
            }
        }
    }

    void aKnobBeforeTheBandLeavesNoDot()
    {
        // Its middle is 1 point into the bar, where the band begins 3 points in.
        const Picture picture = bar(atStart.translated(-7.5, 0), 1.25);
        for (int column = 4; column < 240; ++column) {
            QCOMPARE(picture.at((column + 0.5) / 1.25, 10).alpha(), 0);
        }
    }

    void aDisabledBarIsAThinFrame_data()
    {
        QTest::addColumn<double>("scale");
        QTest::newRow("plain screen") << 1.0;
        QTest::newRow("fine screen") << 2.0;
    }

    void aDisabledBarIsAThinFrame()
    {
        QFETCH(const double, scale);
        const Picture picture = bar(halfway, scale, false);
        for (const QPointF point : {QPointF(2.5, 10), QPointF(197.5, 10), QPointF(50, 5.5), QPointF(50, 14.5),
                 QPointF(2.5, 5.5), QPointF(197.5, 14.5)}) {
            QVERIFY(isNear(picture.at(point.x(), point.y()), ink));
        }
        for (const QPointF point : {QPointF(1.5, 10), QPointF(3.5, 10), QPointF(196.5, 10), QPointF(198.5, 10),
                 QPointF(50, 4.5), QPointF(50, 6.5), QPointF(50, 13.5), QPointF(50, 15.5), QPointF(50, 10)}) {
            QCOMPARE(picture.at(point.x(), point.y()).alpha(), 0);
        }
    }

    void theBandIsDottedUpToTheMiddleOfTheKnob()
    {
        // From 1.5 on, one point on and one point off.
        const Picture picture = bar(halfway, 2);
        for (const double x : {1.75, 3.75, 4.25, 51.75, 99.75}) {
            QVERIFY(isNear(picture.at(x, 10), faintInk));
        }
        for (const double x : {1.25, 3.25, 4.75, 5.25, 52.75, 100.25, 101.75}) {
            QCOMPARE(picture.at(x, 10).alpha(), 0);
        }
        QVERIFY(isNear(bar(atEnd, 2).at(189.75, 10), faintInk));
        QCOMPARE(bar(atEnd, 2).at(191.75, 10).alpha(), 0);
    }

    void theBandIsSixPointsHighOnAFineScreen()
    {
        const Picture picture = bar(halfway, 2);
        QVERIFY(isNear(picture.at(51.75, 12.75), faintInk));
        QVERIFY(isNear(picture.at(51.75, 7.25), faintInk));
        QCOMPARE(picture.at(51.75, 13.25).alpha(), 0);
        QCOMPARE(picture.at(51.75, 6.75).alpha(), 0);
    }

    void theBandIsFivePointsHighOnAPlainScreen()
    {
        // The band is between the pixels: each of two has half of each point's ink.
        const Picture picture = bar(halfway, 1);
        QVERIFY(isNear(picture.at(51.5, 10), QColor(53, 57, 42, 59), 2));
        QVERIFY(isNear(picture.at(51.5, 12.5), QColor(53, 57, 42, 29), 5));
        QCOMPARE(picture.at(51.5, 13.5).alpha(), 0);
    }

    void atTheVeryStartTheBandKeepsClearOfTheFrame()
    {
        const Picture picture = bar(atStart, 1);
        QVERIFY(isNear(picture.at(3.5, 10), faintInk));
        QCOMPARE(picture.at(4.5, 10).alpha(), 0);
        QVERIFY(isNear(picture.at(5.5, 10), faintInk));
        QCOMPARE(picture.at(1.5, 10).alpha(), 0);
        QVERIFY(isNear(bar(atStart.translated(0.99, 0), 1).at(3.5, 10), faintInk));
        QVERIFY(bar(atStart.translated(1, 0), 1).at(1.5, 10).alpha() > 0);
    }

    void theKnobIsADiamond()
    {
        const Picture picture = diamond(true);
        QVERIFY(isNear(picture.at(100, 10), ink));
        QVERIFY(isNear(picture.at(97, 10), ink));
        QVERIFY(isNear(picture.at(100, 13), ink));
        QCOMPARE(picture.at(97, 12.5).alpha(), 0);
        QCOMPARE(picture.at(103, 7.5).alpha(), 0);
        QCOMPARE(picture.at(95.5, 10).alpha(), 0);
    }

    void aDisabledSliderHasNoKnob() { QCOMPARE(diamond(false).at(100, 10).alpha(), 0); }
};

TUNEDECK_TEST(ClassicAudioProgressSliderCellTest, QApplication)
#include "ClassicAudioProgressSliderCellTest.moc"
