// SPDX-License-Identifier: MIT
#include "skin/cells/DrawerBackgroundCell.h"

#include "skin/Picture.h"
#include "support/registerTest.h"

#include <QApplication>
#include <QRegularExpression>
#include <QTest>

#include <utility>

namespace tunedeck {

namespace {
constexpr QSize metal(300, 64);

Picture drawn(const MetalGroundState &state, double scale = 1, QSize size = metal)
{
    return {size, scale, [&](QPainter &painter) { DrawerBackgroundCell().draw(painter, QRectF({}, size), state); }};
}
} // namespace

class DrawerBackgroundCellTest : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void init() { QTest::failOnWarning(QRegularExpression(QStringLiteral(".*"))); }

    void theActiveBodyIsDarkerThanTheInactive()
    {
        for (const double scale : {1.0, 2.0}) {
            QVERIFY(isNear(drawn({.isMainWindow = true}, scale).at(3.25, 32.25), grey(163)));
            QVERIFY(isNear(drawn({}, scale).at(3.25, 32.25), grey(217)));
        }
    }

    void atAFractionalScaleTheFieldsBorderIsACrispPixel()
    {
        // The panel begins 6 points in, on the device pixels 8 at scale 1.25 and 9 at 1.5; its lip is one pixel wide.
        for (const auto &[scale, panel] : {std::pair(1.25, 8), std::pair(1.5, 9)}) {
            const Picture picture = drawn({.isMainWindow = true}, scale);
            const auto pixel = [&picture, scale = scale](
                                   int column) { return picture.at((column + 0.5) / scale, 32.25); };
            QVERIFY(isNear(pixel(panel - 1), pixel(panel - 2)));
            const int field = pixel(panel + 3).lightness();
            QVERIFY(pixel(panel + 1).lightness() < field - 30);
            QCOMPARE(pixel(panel + 2).lightness(), field);
        }
    }

    void theBodyIsTheSameGreyFromTopToBottom()
    {
        const Picture picture = drawn({.isMainWindow = true});
        QVERIFY(isNear(picture.at(4.5, 55.5), grey(163)));
        QVERIFY(isNear(picture.at(150, 4.5), grey(163)));
    }

    void aDrawerThatIsKeptAboveLooksActiveToo()
    {
        QCOMPARE(drawn({.isKeptAboveAllOthers = true}), drawn({.isMainWindow = true}));
        QCOMPARE(drawn({.isMainWindow = true, .isKeptAboveAllOthers = true}), drawn({.isMainWindow = true}));
    }

    void theBodyHasAHairlineBorder()
    {
        QVERIFY(isNear(drawn({.isMainWindow = true}).at(0.5, 32.5), grey(151)));
        QVERIFY(isNear(drawn({.isMainWindow = true}, 2).at(0.25, 32.25), grey(139)));
        QVERIFY(isNear(drawn({.isMainWindow = true}, 2).at(0.75, 32.25), grey(163)));
    }

    void theRimIsAPointThickAtEveryScale()
    {
        // Body, border (half a pixel at scale 1, the upper pixel at scale 2), rim.
        QVERIFY(isNear(drawn({.isMainWindow = true}).at(5.5, 63.5), grey(215)));
        QVERIFY(isNear(drawn({.isMainWindow = true}).at(5.5, 62.5), grey(163)));
        const Picture fine = drawn({.isMainWindow = true}, 2);
        QVERIFY(isNear(fine.at(5.25, 63.75), grey(211)));
        QVERIFY(isNear(fine.at(5.25, 63.25), grey(219)));
        QVERIFY(isNear(fine.at(5.25, 62.75), grey(163)));
    }

    void theRimFadesToNothingAtTheBottom() { QVERIFY(isNear(drawn({.isMainWindow = true}).at(150, 0.5), grey(151))); }

    void thePanelLeavesSixPointsAtTheSidesAndBelow()
    {
        const Picture picture = drawn({.isMainWindow = true});
        QVERIFY(isNear(picture.at(5.5, 35.5), grey(163)));
        QVERIFY(isNear(picture.at(6.5, 35.5), grey(126)));
        QVERIFY(isNear(picture.at(293.5, 35.5), grey(126)));
        QVERIFY(isNear(picture.at(294.5, 35.5), grey(163)));
        QVERIFY(isNear(picture.at(150, 5.5), grey(163)));
        QVERIFY(isNear(picture.at(150, 6.5), grey(204)));
        // The dark well over the rim.
        QVERIFY(isNear(picture.at(150, 63.5), grey(167)));
    }

    void theActiveFieldIsDeeperAtItsTop()
    {
        const Picture picture = drawn({.isMainWindow = true});
        QVERIFY(isNear(picture.at(150, 61.5), QColor(109, 117, 130)));
        QVERIFY(isNear(picture.at(150, 35), QColor(126, 134, 147)));
        QVERIFY(isNear(picture.at(150, 8.5), QColor(142, 150, 164)));
    }

    void theInactiveFieldIsFlat()
    {
        const Picture picture = drawn({});
        for (const double y : {61.5, 35.0, 8.5}) {
            QCOMPARE(picture.at(150, y), QColor(143, 151, 165));
        }
    }

    void atScale1TheFieldsBorderIsAPointWide()
    {
        const Picture picture = drawn({});
        QVERIFY(isNear(picture.at(150, 62.5), QColor(83, 88, 96)));
        QVERIFY(isNear(picture.at(150, 7.5), QColor(83, 88, 96)));
        QVERIFY(isNear(picture.at(7.5, 35.5), QColor(83, 88, 96)));
        QVERIFY(isNear(picture.at(292.5, 35.5), QColor(83, 88, 96)));
        QCOMPARE(picture.at(8.5, 35.5), QColor(143, 151, 165));
        QCOMPARE(picture.at(291.5, 35.5), QColor(143, 151, 165));
    }

    void atScale2TheFieldsBorderIsHalfAPointWide()
    {
        const Picture picture = drawn({}, 2);
        QVERIFY(isNear(picture.at(150, 62.75), QColor(83, 88, 96)));
        QCOMPARE(picture.at(150, 62.25), QColor(143, 151, 165));
        QVERIFY(isNear(picture.at(7.25, 35.25), QColor(83, 88, 96)));
        QCOMPARE(picture.at(7.75, 35.25), QColor(143, 151, 165));
    }

    void theCornersAreRound()
    {
        const Picture picture = drawn({});
        for (const double x : {0.5, 299.5}) {
            QCOMPARE(picture.at(x, 0.5).alpha(), 0);
            // The rim is less round than the body: it alone reaches into the upper corners.
            QVERIFY(isNear(picture.at(x, 63.5), grey(255, 4), 2));
        }
        QCOMPARE(picture.at(0.5, 58.5).alpha(), 255);
    }

    void aHigherFrameHasTheMetalAtItsLowerEdge()
    {
        const Picture picture = drawn({}, 1, QSize(300, 120));
        QVERIFY(isNear(picture.at(3.5, 32.5), grey(217)));
        QCOMPARE(picture.at(150, 63.5).alpha(), 255);
        QCOMPARE(picture.at(150, 64.5).alpha(), 0);
    }
};

} // namespace tunedeck

TUNEDECK_TEST(tunedeck::DrawerBackgroundCellTest, QApplication)
#include "DrawerBackgroundCellTest.moc"
