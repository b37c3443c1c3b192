// SPDX-License-Identifier: MIT
#include "skin/cells/WindowBackgroundCell.h"

#include "skin/Picture.h"
#include "support/registerTest.h"

#include <QApplication>
#include <QRegularExpression>
#include <QTest>

namespace tunedeck {

namespace {
constexpr QSize metal(200, 64);

Picture drawn(const MetalGroundState &state, double scale = 1, QSize size = metal)
{
    return {size, scale, [&](QPainter &painter) { WindowBackgroundCell().draw(painter, QRectF({}, size), state); }};
}
} // namespace

class WindowBackgroundCellTest : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void init() { QTest::failOnWarning(QRegularExpression(QStringLiteral(".*"))); }

    void theActiveMetalIsDarkerThanTheInactive()
    {
        const Picture active = drawn({.isMainWindow = true});
        QVERIFY(isNear(active.at(100, 62.5), grey(206)));
        QVERIFY(isNear(active.at(100, 32.5), grey(185)));
        QVERIFY(isNear(active.at(100, 1.5), grey(164)));
        const Picture inactive = drawn({});
        QVERIFY(isNear(inactive.at(100, 62.5), grey(242)));
        QVERIFY(isNear(inactive.at(100, 32.5), grey(230)));
        QVERIFY(isNear(inactive.at(100, 1.5), grey(217)));
    }

    void aWindowThatIsKeptAboveLooksActiveToo()
    {
        QCOMPARE(drawn({.isKeptAboveAllOthers = true}), drawn({.isMainWindow = true}));
        QCOMPARE(drawn({.isMainWindow = true, .isKeptAboveAllOthers = true}), drawn({.isMainWindow = true}));
    }

    void atScale1TheRimIsAPointThick()
    {
        const Picture picture = drawn({.isMainWindow = true});
        // Metal, half a pixel of border, rim.
        QVERIFY(isNear(picture.at(100, 63.5), grey(230)));
        QVERIFY(isNear(picture.at(100, 62.5), grey(206)));
    }

    void atScale2TheRimIsHalfAPointThick()
    {
        const Picture picture = drawn({.isMainWindow = true}, 2);
        // Metal, a whole pixel of border, rim.
        QVERIFY(isNear(picture.at(100, 63.75), grey(225)));
        QVERIFY(isNear(picture.at(100, 63.25), grey(206)));
    }

    void theRimFadesToNothingAtTheBottom()
    {
        // Metal and half a pixel of border.
        QVERIFY(isNear(drawn({.isMainWindow = true}).at(100, 0.5), grey(152)));
    }

    void theSidesHaveABorderAndNoRim()
    {
        QVERIFY(isNear(drawn({.isMainWindow = true}).at(0.5, 32.5), grey(171)));
        QVERIFY(isNear(drawn({.isMainWindow = true}).at(199.5, 32.5), grey(171)));
        QVERIFY(isNear(drawn({.isMainWindow = true}, 2).at(0.25, 32.25), grey(157)));
        QVERIFY(isNear(drawn({.isMainWindow = true}, 2).at(0.75, 32.25), grey(185)));
    }

    void theCornersAreRound()
    {
        const Picture picture = drawn({.isMainWindow = true});
        for (const double x : {0.5, 199.5}) {
            for (const double y : {0.5, 63.5}) {
                QCOMPARE(picture.at(x, y).alpha(), 0);
            }
        }
        QCOMPARE(picture.at(4.5, 63.5).alpha(), 255);
        QCOMPARE(picture.at(0.5, 59.5).alpha(), 255);
        QVERIFY(picture.at(1.5, 62.5).alpha() > 0);
        QVERIFY(picture.at(2.5, 63.5).alpha() < 255);
        // The outline, its border and both outlines of the rim cross this pixel.
        QVERIFY(isNear(picture.at(1.5, 62.5), grey(193, 245), 6));
    }

    void aHigherFrameHasTheMetalAtItsLowerEdge()
    {
        const Picture picture = drawn({}, 1, QSize(200, 200));
        QVERIFY(isNear(picture.at(100, 32.5), grey(230)));
        QCOMPARE(picture.at(100, 63.5).alpha(), 255);
        QCOMPARE(picture.at(100, 64.5).alpha(), 0);
        QCOMPARE(picture.at(100, 199.5).alpha(), 0);
    }
};

} // namespace tunedeck

TUNEDECK_TEST(tunedeck::WindowBackgroundCellTest, QApplication)
#include "WindowBackgroundCellTest.moc"
