// SPDX-License-Identifier: MIT
#include "skin/cells/MetalPopupButtonCell.h"

#include "skin/Picture.h"
#include "skin/TitleStem.h"
#include "support/registerTest.h"

#include <QApplication>
#include <QRegularExpression>
#include <QTest>

namespace tunedeck {

namespace {
constexpr QSize size(180, 22);
const QColor slate(72, 72, 90);

Picture drawn(const MetalPopupButtonState &state, double scale = 1, const QRectF &frame = QRectF({}, size))
{
    return {size, scale, [&](QPainter &painter) {
                flipY(painter, size.height());
                MetalPopupButtonCell().draw(painter, frame, state);
            }};
}

/// The colour at `x` and, from the upper edge, `y`.
QColor at(const Picture &picture, double x, double y)
{
    return picture.at(x, size.height() - y);
}

std::vector<QColor> title(MetalPopupButtonState state, double scale = 1)
{
    state.title = stemTitle();
    state.font = stemFont();
    return stemColumn(scale, [&state](QPainter &painter, const QRectF &frame) {
        const double stem = QFontMetricsF(state.font).horizontalAdvance(state.title);
        MetalPopupButtonCell().drawTitle(painter, frame.adjusted((frame.width() - stem) / 2, 0, 0, 0), state);
    });
}
} // namespace

class MetalPopupButtonCellTest : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void init() { QTest::failOnWarning(QRegularExpression(QStringLiteral(".*"))); }

    void theFaceLiesAPointInsideTheRim()
    {
        const Picture picture = drawn({});
        QCOMPARE(at(picture, 90, 0.5).alpha(), 0);
        QVERIFY(isNear(at(picture, 90, 1.5), slate));
        QVERIFY(isNear(at(picture, 90, 2.5), grey(225)));
        QVERIFY(isNear(at(picture, 90, 17.5), grey(150)));
        QVERIFY(isNear(at(picture, 90, 18.5), slate));
        QVERIFY(isNear(at(picture, 3.5, 10), slate));
        QCOMPARE(at(picture, 2.5, 10).alpha(), 0);
    }

    void aPressedFaceIsDarkAndLighterBelow()
    {
        const Picture picture = drawn({.isPressed = true});
        QVERIFY(isNear(at(picture, 90, 2.5), grey(119)));
        QVERIFY(isNear(at(picture, 90, 17.5), grey(149)));
    }

    void aLitLipShowsUnderTheRim()
    {
        QVERIFY(isNear(at(drawn({}), 90, 19.5), grey(244, 61), 3));
        QCOMPARE(at(drawn({}), 90, 20.5).alpha(), 0);
    }

    void theArrowsPointUpAndDown()
    {
        const Picture picture = drawn({.isMainWindow = true});
        const auto isArrow = [&picture](double x, double y) { return isNear(at(picture, x, y), grey(64)); };
        QVERIFY(isArrow(174.5, 11.5));
        QVERIFY(isArrow(177.5, 11.5));
        QVERIFY(isArrow(175.5, 12.5));
        QVERIFY(isArrow(174.5, 8.5));
        QVERIFY(isArrow(177.5, 8.5));
        // A gap of two points between them, and tips in the middle.
        QVERIFY(at(picture, 174.5, 9.5).lightness() > 150);
        QVERIFY(at(picture, 174.5, 10.5).lightness() > 150);
        QVERIFY(at(picture, 173.5, 13.5).lightness() > 150);
        QVERIFY(at(picture, 173.5, 6.5).lightness() > 150);
    }

    void theArrowsFadeInAnotherWindowAndOnADisabledButton()
    {
        QVERIFY(isNear(at(drawn({.isMainWindow = true}), 175.5, 11.5), grey(64)));
        QVERIFY(isNear(at(drawn({.isMainWindow = false}), 175.5, 11.5), grey(102)));
        QVERIFY(isNear(at(drawn({.isEnabled = false, .isMainWindow = true}), 175.5, 11.5), grey(102)));
        // Over the pressed face: 0.667 of 64 and 0.333 of 137.
        QVERIFY(isNear(at(drawn({.isPressed = true, .isMainWindow = false}), 175.5, 11.5), grey(88)));
    }

    void theArrowsHaveAShadowOnlyOnAFineScreen()
    {
        const auto underUpperArrow = [](const MetalPopupButtonState &state) {
            return at(drawn(state, 2), 174.75, 9.25);
        };
        QVERIFY(isNear(underUpperArrow({.isMainWindow = true}), grey(210)));
        QVERIFY(isNear(underUpperArrow({.isMainWindow = false}), grey(203)));
        QVERIFY(isNear(underUpperArrow({.isPressed = true, .isMainWindow = true}), grey(88)));
        QVERIFY(isNear(at(drawn({.isMainWindow = true}), 174.5, 9.5), grey(186)));
    }

    void theArrowsFollowTheFramesWidthAndNotItsPosition()
    {
        // In a frame of 171 points that begins at 9, they are in the face, which ends at 176.
        const Picture picture = drawn({.isMainWindow = true}, 1, QRectF(9, 0, 171, 22));
        QVERIFY(isNear(at(picture, 166.5, 11.5), grey(64)));
        QVERIFY(isNear(at(picture, 166.5, 8.5), grey(64)));
        QVERIFY(at(picture, 170.5, 11.5).lightness() > 150);
        QVERIFY(isNear(at(picture, 176.5, 11.5), slate));
        QVERIFY(isNear(at(picture, 12.5, 11.5), slate));
    }

    void theTitleIsOpaqueInTheMainWindow()
    {
        QVERIFY(isMostly(title({.isMainWindow = true}), grey(46)));
        QVERIFY(isMostly(title({.isPressed = true, .isMainWindow = true}), grey(224)));
    }

    void theTitleFadesInAnotherWindowAndOnADisabledButton()
    {
        QVERIFY(isMostly(title({.isMainWindow = false}), grey(67, 189)));
        QVERIFY(isMostly(title({.isEnabled = false, .isMainWindow = true}), grey(67, 189)));
    }

    void aPressedTitleFadesInAnotherWindowToo()
    {
        // Light ink of 0.667 over a black shadow of 0.222.
        QVERIFY(isMostly(title({.isPressed = true, .isMainWindow = false}), grey(202, 189)));
    }

    void theTitlesShadowIsNeverBlurred()
    {
        const std::vector<QColor> column = title({.isMainWindow = true});
        QVERIFY(isNear(fromBelow(column, 0), grey(255, 85), 2));
        QVERIFY(isNear(fromBelow(column, 1), grey(46)));
        const std::vector<QColor> pressed = title({.isPressed = true, .isMainWindow = true});
        QVERIFY(isNear(fromBelow(pressed, 0), grey(0, 85), 2));
        QVERIFY(isNear(fromBelow(pressed, 1), grey(224)));
    }

    void onAFineScreenTheTitlesShadowIsThreeQuartersOfAPointLower()
    {
        const std::vector<QColor> column = title({.isMainWindow = true}, 2);
        QVERIFY(isNear(fromBelow(column, 0), grey(255, 42), 2));
        QVERIFY(isNear(fromBelow(column, 1), grey(255, 85), 2));
        QVERIFY(isNear(fromBelow(column, 2), grey(46)));
    }

    void aTitleThatIsTooLongEndsBeforeTheArrows()
    {
        const Picture picture = drawn({.title = QString(1000, u'M'), .font = stemFont(), .isMainWindow = true});
        const Picture bare = drawn({.isMainWindow = true});
        for (int y = 0; y < size.height(); ++y) {
            for (const double x : {172.5, 175.5, 178.5, 4.5, 6.5}) {
                QCOMPARE(at(picture, x, y + 0.5), at(bare, x, y + 0.5));
            }
        }
        QVERIFY(picture != bare);
    }
};

} // namespace tunedeck

TUNEDECK_TEST(tunedeck::MetalPopupButtonCellTest, QApplication)
#include "MetalPopupButtonCellTest.moc"
