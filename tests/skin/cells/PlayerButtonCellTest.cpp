// SPDX-License-Identifier: MIT
#include "skin/cells/PlayerButtonCell.h"

#include "skin/Picture.h"
#include "support/registerTest.h"

#include <QApplication>
#include <QRegularExpression>
#include <QTest>

using namespace tunedeck;

namespace {
constexpr PlayerButtonState empty{.controlGlyph = PlayerButtonTypes::reserved5};

Picture large(const PlayerButtonState &state, double scale = 1)
{
    return {QSize(35, 35), scale,
        [&state](QPainter &painter) { PlayerButtonCell().draw(painter, QRectF(0, 0, 35, 35), state); }};
}

Picture small(const PlayerButtonState &state, double scale = 1)
{
    return {QSize(25, 25), scale,
        [&state](QPainter &painter) { TunedeckPlayerButtonCell().draw(painter, QRectF(0, 0, 25, 25), state); }};
}

PlayerButtonState showing(PlayerButtonTypes glyph)
{
    return {.controlGlyph = glyph};
}

bool isGlyph(const QColor &color)
{
    return color.lightness() < 100;
}
} // namespace

class PlayerButtonCellTest : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void init() { QTest::failOnWarning(QRegularExpression(QStringLiteral(".*"))); }

    void aGlyphIsMadeOfARawValueFrom0To7()
    {
        QCOMPARE(playerButtonType(0), PlayerButtonTypes::pause);
        QCOMPARE(playerButtonType(1), PlayerButtonTypes::play);
        QCOMPARE(playerButtonType(2), PlayerButtonTypes::stop);
        QCOMPARE(playerButtonType(3), PlayerButtonTypes::backward);
        QCOMPARE(playerButtonType(4), PlayerButtonTypes::forward);
        QCOMPARE(playerButtonType(7), PlayerButtonTypes::reserved7);
        QCOMPARE(playerButtonType(8), std::nullopt);
        QCOMPARE(playerButtonType(-1), std::nullopt);
    }

    void theBezelIsDarkAboveAndLitBelow()
    {
        QVERIFY(isNear(large(empty).at(17.5, 34.5), grey(4, 65)));
        QVERIFY(isNear(large(empty).at(17.5, 0.5), grey(251, 164)));
        QVERIFY(isNear(small(empty).at(12.5, 24.5), grey(5, 78), 2));
    }

    void theBezelIsLessLitOnAFineScreen() { QVERIFY(isNear(large(empty, 2).at(17.25, 0.25), grey(253, 102))); }

    void theBezelIsDarkerInTheDark()
    {
        const PlayerButtonState dark{.controlGlyph = PlayerButtonTypes::reserved5, .isDark = true};
        for (const double scale : {1.0, 2.0}) {
            QVERIFY(isNear(large(dark, scale).at(17.25, 34.75), grey(3, 106), 2));
            QVERIFY(isNear(large(dark, scale).at(17.25, 0.25), grey(252, 39), 4));
        }
    }

    void theCornersStayEmpty()
    {
        QCOMPARE(large(empty).at(0.5, 0.5).alpha(), 0);
        QCOMPARE(large(empty).at(34.5, 34.5).alpha(), 0);
    }

    void aRingSurroundsTheFace()
    {
        QVERIFY(isNear(large(empty).at(17.5, 33.5), grey(4, 125), 2));
        QVERIFY(isNear(large(empty).at(17.5, 30.5), grey(241)));
        QVERIFY(isNear(large(empty).at(22.5, 19.5), grey(245)));
    }

    void theShadeHasTheFormOfAWave()
    {
        // The points face each other across the centre; the wave swings up at the left and down at the right.
        QVERIFY(isNear(large(empty).at(12.5, 15.5), grey(229)));
        QVERIFY(isNear(large(empty).at(22.5, 19.5), grey(245)));
        QVERIFY(isNear(large(empty).at(17.5, 4.5), grey(240)));
    }

    void aPressedFaceIsTintedWithTheAccent_data()
    {
        QTest::addColumn<bool>("graphite");
        QTest::addColumn<QColor>("face");
        QTest::addColumn<QColor>("glare");
        QTest::newRow("blue") << false << QColor(140, 184, 230) << QColor(148, 209, 241);
        QTest::newRow("graphite") << true << QColor(166, 176, 186) << QColor(198, 211, 222);
    }

    void aPressedFaceIsTintedWithTheAccent()
    {
        QFETCH(const bool, graphite);
        QFETCH(const QColor, face);
        QFETCH(const QColor, glare);
        const Picture picture =
            large({.controlGlyph = PlayerButtonTypes::play, .isPressed = true, .isGraphite = graphite});
        QVERIFY(isNear(picture.at(17.5, 30.5), face));
        QVERIFY(isNear(picture.at(17.5, 4.5), glare));
    }

    void theGlyphOfAPressedButtonLiesAboveTheGlare()
    {
        const Picture picture = large({.controlGlyph = PlayerButtonTypes::stop, .isPressed = true});
        QVERIFY(isNear(picture.at(13.5, 12.5), grey(69)));
        QVERIFY(isNear(picture.at(22.5, 22.5), grey(69)));
    }

    void theGlyphOfAButtonAtRestLiesUnderTheShade()
    {
        const Picture picture = large(showing(PlayerButtonTypes::stop));
        QVERIFY(picture.at(13.5, 12.5).red() < 84);
        QVERIFY(isNear(picture.at(22.5, 22.5), grey(84)));
    }

    void pauseIsTwoBars()
    {
        const Picture picture = large(showing(PlayerButtonTypes::pause));
        for (const double x : {11.5, 15.5, 19.5, 23.5}) {
            QVERIFY(isGlyph(picture.at(x, 11.5)));
            QVERIFY(isGlyph(picture.at(x, 23.5)));
            QVERIFY(!isGlyph(picture.at(x, 10.5)));
            QVERIFY(!isGlyph(picture.at(x, 24.5)));
        }
        for (const double x : {10.5, 16.5, 18.5, 24.5}) {
            QVERIFY(!isGlyph(picture.at(x, 17.5)));
        }
    }

    void playPointsRight()
    {
        const Picture picture = large(showing(PlayerButtonTypes::play));
        QVERIFY(isGlyph(picture.at(12.5, 12.5)));
        QVERIFY(isGlyph(picture.at(12.5, 22.5)));
        QVERIFY(isGlyph(picture.at(24.5, 17.5)));
        QVERIFY(!isGlyph(picture.at(11.5, 17.5)));
        QVERIFY(!isGlyph(picture.at(24.5, 20.5)));
        QVERIFY(!isGlyph(picture.at(27.5, 17.5)));
    }

    void backwardAndForwardAreTwoTrianglesThatOverlap()
    {
        const Picture forward = small(showing(PlayerButtonTypes::forward));
        QVERIFY(isGlyph(forward.at(7.5, 14.5)));
        QVERIFY(isGlyph(forward.at(13.5, 14.5)));
        QVERIFY(isGlyph(forward.at(13.5, 12.5)));
        QVERIFY(!isGlyph(forward.at(12.5, 14.5)));
        QVERIFY(!isGlyph(forward.at(6.5, 12.5)));
        const Picture backward = small(showing(PlayerButtonTypes::backward));
        QVERIFY(isGlyph(backward.at(17.5, 14.5)));
        QVERIFY(isGlyph(backward.at(11.5, 14.5)));
        QVERIFY(isGlyph(backward.at(11.5, 12.5)));
        QVERIFY(!isGlyph(backward.at(12.5, 15.5)));
        QVERIFY(!isGlyph(backward.at(18.5, 12.5)));
    }

    void whatACellDoesNotKnowLeavesItsFaceEmpty()
    {
        for (const qint64 value : {3, 4, 6, 7}) {
            QVERIFY(large(showing(*playerButtonType(value))) == large(empty));
        }
        for (const qint64 value : {0, 1, 2, 6, 7}) {
            QVERIFY(small(showing(*playerButtonType(value))) == small(empty));
        }
    }

    void theGlyphOfADisabledButtonThatSkipsIsFaint()
    {
        const PlayerButtonState disabled{.controlGlyph = PlayerButtonTypes::forward, .isEnabled = false};
        QVERIFY(isNear(small(showing(PlayerButtonTypes::forward)).at(8.5, 13.5), grey(84)));
        QVERIFY(isNear(small(disabled).at(8.5, 13.5), grey(192)));
    }

    void theGlyphOfADisabledButtonThatPlaysIsNot()
    {
        const PlayerButtonState disabled{.controlGlyph = PlayerButtonTypes::play, .isEnabled = false};
        QVERIFY(large(disabled) == large(showing(PlayerButtonTypes::play)));
    }
};

TUNEDECK_TEST(PlayerButtonCellTest, QApplication)
#include "PlayerButtonCellTest.moc"
