// SPDX-License-Identifier: MIT
#include "skin/cells/WindowControlButtonCell.h"

#include "skin/Picture.h"
#include "support/abortedRun.h"
#include "support/registerTest.h"

#include <QGuiApplication>
#include <QRegularExpression>
#include <QTest>

using namespace tunedeck;

namespace {
constexpr WindowControlButtonStyle styles[] = {
    WindowControlButtonStyle::close, WindowControlButtonStyle::minimize, WindowControlButtonStyle::maximize};

Picture gem(const WindowControlButtonState &state, double scale = 1)
{
    return {QSize(14, 14), scale,
        [&state](QPainter &painter) { WindowControlButtonCell().draw(painter, QRectF(0, 0, 14, 14), state); }};
}

/// The change that a symbol makes to the green of the gem at (`x`, `y`).
int inkAt(WindowControlButtonState state, double x, double y, double scale = 1)
{
    state.isHovered = false;
    const Picture plain = gem(state, scale);
    state.isHovered = true;
    return plain.at(x, y).green() - gem(state, scale).at(x, y).green();
}
} // namespace

class WindowControlButtonCellTest : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void init() { QTest::failOnWarning(QRegularExpression(QStringLiteral(".*"))); }

    void aStyleIsMadeOfARawValueFrom0To2()
    {
        QCOMPARE(windowControlButtonStyle(0), WindowControlButtonStyle::close);
        QCOMPARE(windowControlButtonStyle(1), WindowControlButtonStyle::minimize);
        QCOMPARE(windowControlButtonStyle(2), WindowControlButtonStyle::maximize);
        QCOMPARE(windowControlButtonStyle(3), std::nullopt);
        QCOMPARE(windowControlButtonStyle(-1), std::nullopt);
    }

    void anyOtherStyleEndsTheProgram()
    {
        const auto lastWords = lastWordsOfAbortedRun(QStringLiteral("impossible style"));
        QVERIFY(lastWords);
        QVERIFY2(lastWords->contains(QStringLiteral("Impossible style")), qPrintable(*lastWords));
    }

    void theRimIsLitBelowInTheLight()
    {
        const Picture picture = gem({}, 2);
        QCOMPARE(picture.at(7, 13.75).alpha(), 0);
        QVERIFY(isNear(picture.at(7, 0.25), grey(255, 133)));
        QVERIFY(isNear(gem({}, 4).at(7, 0.125), grey(255, 136)));
    }

    void theRimIsDarkAboveInTheDark()
    {
        const Picture picture = gem({.isDark = true}, 2);
        QVERIFY(isNear(picture.at(7, 13.75), grey(5, 106), 3));
        QVERIFY(isNear(picture.at(7, 0.25), grey(250, 40), 5));
    }

    void theGemsAreRedOrangeAndGreen()
    {
        const auto side = [](WindowControlButtonStyle style) { return gem({.controlStyle = style}).at(1.5, 7.5); };
        const QColor close = side(WindowControlButtonStyle::close);
        const QColor minimize = side(WindowControlButtonStyle::minimize);
        const QColor maximize = side(WindowControlButtonStyle::maximize);
        QVERIFY(close.red() > 2 * close.green() && close.red() > 2 * close.blue());
        QVERIFY(minimize.red() > minimize.green() && minimize.green() > minimize.blue());
        QVERIFY(maximize.green() > maximize.red() && maximize.red() > maximize.blue());
    }

    void underGraphiteTheyAreOneBlueGrey()
    {
        WindowControlButtonState state{.isGraphite = true};
        const QColor body = gem(state).at(1.5, 7.5);
        QVERIFY(body.blue() > body.green() && body.green() > body.red());
        for (const WindowControlButtonStyle style : styles) {
            state.controlStyle = style;
            QVERIFY(isNear(gem(state).at(1.5, 7.5), body, 0));
        }
    }

    void pressingDarkensTheBodyByMoreThanAQuarter()
    {
        // At the gem's side the highlight has an alpha of 0.376; the body below it shines through with the rest.
        constexpr double highlight = 255 * 0.376;
        constexpr double body = 209 * 0.624;
        const int rest = gem({.controlStyle = WindowControlButtonStyle::minimize}, 4).at(1.76, 7).red();
        const int pressed =
            gem({.controlStyle = WindowControlButtonStyle::minimize, .isPressed = true}, 4).at(1.76, 7).red();
        QVERIFY(qAbs(pressed - rest * (highlight + 0.725 * body) / (highlight + body)) < 2.5);
    }

    void pressingLowersTheTopOfTheGlare()
    {
        const auto step = [](bool isPressed) {
            const Picture picture =
                gem({.controlStyle = WindowControlButtonStyle::minimize, .isPressed = isPressed}, 8);
            return picture.at(7, 11.65).red() - picture.at(7, 11.9).red();
        };
        QVERIFY(step(false) > 50);
        QVERIFY(step(true) < 15);
    }

    void aSymbolIsDrawnOnlyUnderThePointer()
    {
        for (const WindowControlButtonStyle style : styles) {
            QVERIFY(gem({.controlStyle = style, .isHovered = true}) != gem({.controlStyle = style}));
            QVERIFY(inkAt({.controlStyle = style}, 7, 7) > 50);
        }
    }

    void theLinesOfASymbolAreThinnerOnAFineScreen()
    {
        const WindowControlButtonState minimize{.controlStyle = WindowControlButtonStyle::minimize};
        // Two points, from 6 to 8.
        const int full = inkAt(minimize, 7, 6.5);
        QVERIFY(full > 50);
        QVERIFY(inkAt(minimize, 7, 7.5) > 50);
        QCOMPARE(inkAt(minimize, 7, 5.5), 0);
        QCOMPARE(inkAt(minimize, 7, 8.5), 0);
        // One and a half, from 6.25 to 7.75.
        QVERIFY(inkAt(minimize, 7, 6.75, 2) > 50);
        QVERIFY(inkAt(minimize, 7, 7.25, 2) > 50);
        QVERIFY(inkAt(minimize, 7, 6.25, 2) > 25 && inkAt(minimize, 7, 6.25, 2) < 0.6 * full);
        QVERIFY(inkAt(minimize, 7, 7.75, 2) > 25 && inkAt(minimize, 7, 7.75, 2) < 0.6 * full);
        QCOMPARE(inkAt(minimize, 7, 5.75, 2), 0);
        QCOMPARE(inkAt(minimize, 7, 8.25, 2), 0);
    }

    void theSymbolsAreACrossAMinusAndAPlusWithRoundEnds()
    {
        const WindowControlButtonState close{.controlStyle = WindowControlButtonStyle::close};
        const WindowControlButtonState minimize{.controlStyle = WindowControlButtonStyle::minimize};
        const WindowControlButtonState maximize{.controlStyle = WindowControlButtonStyle::maximize};
        for (const QPointF end : {QPointF(5, 5), QPointF(9, 5), QPointF(5, 9), QPointF(9, 9)}) {
            QVERIFY(inkAt(close, end.x(), end.y(), 8) > 20);
            QCOMPARE(inkAt(minimize, end.x(), end.y(), 8), 0);
            QCOMPARE(inkAt(maximize, end.x(), end.y(), 8), 0);
        }
        QVERIFY(inkAt(minimize, 4, 7, 8) > 20);
        QCOMPARE(inkAt(minimize, 3.8, 7.7, 8), 0);
        QCOMPARE(inkAt(minimize, 3.5, 7, 8), 0);
        QVERIFY(inkAt(maximize, 7, 10, 8) > 20);
        QVERIFY(inkAt(maximize, 10, 7, 8) > 20);
        QCOMPARE(inkAt(minimize, 7, 10, 8), 0);
    }

    void underGraphiteASymbolIsBlackAtFortySevenPercent()
    {
        for (const WindowControlButtonStyle style : styles) {
            for (const bool isPressed : {false, true}) {
                WindowControlButtonState state{.controlStyle = style, .isPressed = isPressed, .isGraphite = true};
                const QColor plain = gem(state).at(7, 7);
                state.isHovered = true;
                const QColor ink = gem(state).at(7, 7);
                const auto darker = [](int level) { return qRound(level * (1 - 0.47)); };
                QVERIFY(isNear(ink, QColor(darker(plain.red()), darker(plain.green()), darker(plain.blue()))));
            }
        }
    }
};

TUNEDECK_TEST(WindowControlButtonCellTest, QGuiApplication,
    [](const QString &) { gem({.controlStyle = static_cast<WindowControlButtonStyle>(3)}); })

#include "WindowControlButtonCellTest.moc"
