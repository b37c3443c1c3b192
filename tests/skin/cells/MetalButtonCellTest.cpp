// SPDX-License-Identifier: MIT
#include "skin/cells/MetalButtonCell.h"

#include "skin/Picture.h"
#include "skin/TitleStem.h"
#include "support/registerTest.h"

#include <QApplication>
#include <QRegularExpression>
#include <QTest>

namespace tunedeck {

namespace {
constexpr QSize size(44, 30);
const QColor slate(72, 72, 90);
const QString knob = QStringLiteral("knob");

Picture drawn(const MetalButtonState &state, double scale = 1)
{
    return {size, scale, [&state](QPainter &painter) {
                flipY(painter, size.height());
                MetalButtonCell().draw(painter, QRectF({}, size), state);
            }};
}

/// The colour of the pixel halfway across whose middle is `y` points below the upper edge.
QColor below(const Picture &picture, double y)
{
    return picture.at(22.25, size.height() - y);
}

std::vector<QColor> title(MetalButtonState state, double scale = 1)
{
    state.title = stemTitle();
    state.font = stemFont();
    return stemColumn(scale,
        [&state](QPainter &painter, const QRectF &frame) { MetalButtonCell().drawTitle(painter, frame, state); });
}
} // namespace

class MetalButtonCellTest : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void init() { QTest::failOnWarning(QRegularExpression(QStringLiteral(".*"))); }

    void theFaceLiesAPointInsideTheRim()
    {
        const Picture picture = drawn({});
        QCOMPARE(below(picture, 1.5).alpha(), 0);
        QVERIFY(isNear(below(picture, 2.5), slate));
        QVERIFY(isNear(below(picture, 23.5), slate));
        QVERIFY(isNear(picture.at(4.5, 17), slate));
        QVERIFY(isNear(picture.at(39.5, 17), slate));
        QCOMPARE(picture.at(3.5, 17).alpha(), 0);
        QCOMPARE(picture.at(40.5, 17).alpha(), 0);
        QVERIFY(picture.at(5.5, 17).lightness() > 150);
        QVERIFY(picture.at(38.5, 17).lightness() > 150);
    }

    void atAFractionalScaleTheRimIsACrispPixel_data()
    {
        QTest::addColumn<double>("scale");
        // The colour of the rim's outermost pixels.
        QTest::addColumn<QRect>("rim");
        QTest::newRow("scale 1.25") << 1.25 << QRect(QPoint(5, 3), QPoint(49, 29));
        QTest::newRow("scale 1.5") << 1.5 << QRect(QPoint(6, 3), QPoint(59, 35));
    }

    void atAFractionalScaleTheRimIsACrispPixel()
    {
        QFETCH(const double, scale);
        QFETCH(const QRect, rim);
        const Picture picture = drawn({}, scale);
        const auto pixel = [&picture, scale](int column, int row) {
            return picture.at((column + 0.25) / scale, size.height() - (row + 0.25) / scale);
        };
        for (const int step : {0, 5, 10}) {
            const int row = 12 + step;
            const int column = 20 + step;
            QVERIFY(isNear(pixel(rim.left(), row), slate));
            QVERIFY(isNear(pixel(rim.right(), row), slate));
            QVERIFY(isNear(pixel(column, rim.top()), slate));
            QVERIFY(isNear(pixel(column, rim.bottom()), slate));
            QCOMPARE(pixel(rim.left() - 1, row).alpha(), 0);
            QCOMPARE(pixel(rim.right() + 1, row).alpha(), 0);
            QCOMPARE(pixel(column, rim.top() - 1).alpha(), 0);
            QVERIFY(pixel(rim.left() + 1, row).lightness() > 150);
            QVERIFY(pixel(rim.right() - 1, row).lightness() > 150);
            QVERIFY(pixel(column, rim.top() + 1).lightness() > 200);
            QVERIFY(pixel(column, rim.bottom() - 1).lightness() > 145);
            QVERIFY(isNear(pixel(column, rim.bottom() + 1), QColor(240, 240, 240, 60), 4));
            QCOMPARE(pixel(column, rim.bottom() + 2).alpha(), 0);
        }
    }

    void theFaceIsLightestAtItsTop()
    {
        const Picture picture = drawn({});
        QVERIFY(isNear(below(picture, 3.5), grey(228)));
        QVERIFY(isNear(below(picture, 4.5), grey(215)));
        QVERIFY(isNear(below(picture, 22.5), grey(150)));
    }

    void aPressedFaceIsDarkAndLighterBelow()
    {
        for (const double scale : {1.0, 2.0}) {
            const Picture picture = drawn({.isPressed = true}, scale);
            QVERIFY(isNear(below(picture, 3.25), grey(118)));
            QVERIFY(isNear(below(picture, 22.75), grey(149)));
            QVERIFY(isNear(below(picture, 2.25), slate));
        }
    }

    void aLitLipShowsUnderTheRim()
    {
        QVERIFY(isNear(below(drawn({}), 24.5), grey(245, 61), 2));
        QCOMPARE(below(drawn({}), 25.5).alpha(), 0);
    }

    void theLipIsFainterOnAFineScreen()
    {
        const Picture picture = drawn({}, 2);
        QVERIFY(isNear(below(picture, 24.25), grey(235, 59), 2));
        QVERIFY(isNear(below(picture, 24.75), grey(255, 32), 2));
        QCOMPARE(below(picture, 25.25).alpha(), 0);
    }

    void theTitleIsOpaqueInTheMainWindow() { QVERIFY(isMostly(title({.isMainWindow = true}), grey(46))); }

    void theTitleFadesInAnotherWindowAndOnADisabledButton()
    {
        // Translucent ink over a lip that is as translucent.
        const QColor faded = grey(67, 189);
        QVERIFY(isMostly(title({.isMainWindow = false}), faded));
        QVERIFY(isMostly(title({.isEnabled = false, .isMainWindow = true}), faded));
        QVERIFY(isMostly(title({.isEnabled = false, .isMainWindow = false}), faded));
    }

    void aPressedTitleIsLightAndOpaqueInEveryWindow()
    {
        QVERIFY(isMostly(title({.isPressed = true, .isMainWindow = true}), grey(224)));
        QVERIFY(isMostly(title({.isPressed = true, .isMainWindow = false}), grey(224)));
    }

    void theTitleHasAWhiteLipOfAPoint()
    {
        const std::vector<QColor> column = title({.isMainWindow = true});
        QVERIFY(isNear(fromBelow(column, 0), grey(255, 85), 2));
        QVERIFY(isNear(fromBelow(column, 1), grey(46)));
    }

    void onAFineScreenTheLipIsThreeQuartersOfAPoint()
    {
        const std::vector<QColor> column = title({.isMainWindow = true}, 2);
        QVERIFY(isNear(fromBelow(column, 0), grey(255, 42), 2));
        QVERIFY(isNear(fromBelow(column, 1), grey(255, 85), 2));
        QVERIFY(isNear(fromBelow(column, 2), grey(46)));
    }

    void aFadedTitleCastsAFadedLip() { QVERIFY(isNear(fromBelow(title({}), 0), grey(255, 57), 2)); }

    void theShadowOfAPressedTitleIsBlackAndBlurred()
    {
        const std::vector<QColor> column = title({.isPressed = true});
        // A point lower than the ink, with a deviation of half a point.
        QVERIFY(isNear(fromBelow(column, 0), grey(0, 9)));
        QVERIFY(isNear(fromBelow(column, 1), grey(0, 76)));
        QVERIFY(isNear(fromBelow(column, 2), grey(224)));
    }

    void theTitleLiesInTheMiddleOfTheFace()
    {
        QFont font = stemFont();
        font.setPixelSize(12);
        const Picture picture = drawn({.title = stemTitle(), .font = font, .isMainWindow = true});
        QVERIFY(isNear(picture.at(22, size.height() - 13), grey(46)));
        QVERIFY(picture.at(17, size.height() - 13).lightness() > 150);
        QVERIFY(picture.at(27, size.height() - 13).lightness() > 150);
    }

    void aTitleThatIsTooLongStaysOnTheFace()
    {
        const Picture picture = drawn({.title = QString(1000, u'M'), .font = stemFont(), .isMainWindow = true});
        const Picture bare = drawn({});
        for (int y = 0; y < size.height(); ++y) {
            for (const double x : {0.5, 4.5, 5.5, 38.5, 39.5, 43.5}) {
                QCOMPARE(picture.at(x, y + 0.5), bare.at(x, y + 0.5));
            }
        }
    }

    void anImageTakesTheTitlesPlaceAtItsOwnSize()
    {
        const Picture picture = drawn({.title = stemTitle(), .font = stemFont(), .image = knob, .isMainWindow = true});
        const Picture bare = drawn({});
        // 13 points around the face's middle.
        QVERIFY(picture.at(22, 17) != bare.at(22, 17));
        QCOMPARE(picture.at(22, 24.5), bare.at(22, 24.5));
        QCOMPARE(picture.at(22, 9.5), bare.at(22, 9.5));
        QCOMPARE(picture.at(14.5, 17), bare.at(14.5, 17));
        QCOMPARE(picture.at(29.5, 17), bare.at(29.5, 17));
    }

    void theImageFadesAsTheTitleDoes()
    {
        const auto image = [](MetalButtonState state) {
            state.image = knob;
            return drawn(state);
        };
        const Picture active = image({.isMainWindow = true});
        QVERIFY(image({.isMainWindow = false}) != active);
        QCOMPARE(image({.isEnabled = false, .isMainWindow = true}), image({.isMainWindow = false}));
    }
};

} // namespace tunedeck

TUNEDECK_TEST(tunedeck::MetalButtonCellTest, QApplication)
#include "MetalButtonCellTest.moc"
