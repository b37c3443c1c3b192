// SPDX-License-Identifier: MIT
#include "skin/cells/MetalGlyphButtonCell.h"

#include "skin/Picture.h"
#include "skin/drawing/flipY.h"
#include "support/registerTest.h"

#include <QApplication>
#include <QRegularExpression>
#include <QTest>

namespace tunedeck {

namespace {
constexpr QSize size(44, 30);
const QString knob = QStringLiteral("knob");

template <typename Cell> Picture drawn(const MetalButtonState &state, double scale)
{
    return {size, scale, [&state](QPainter &painter) {
                flipY(painter, size.height());
                Cell().draw(painter, QRectF({}, size), state);
            }};
}

Picture glyph(double scale, bool isPressed = false)
{
    return drawn<MetalGlyphButtonCell>({.image = knob, .isPressed = isPressed}, scale);
}

Picture bare(double scale, bool isPressed = false)
{
    return drawn<MetalButtonCell>({.isPressed = isPressed}, scale);
}

/// The rows that the image reaches above and below the middle, in points from the upper edge.
struct Reach {
    double top = 0;
    double bottom = 0;

    bool operator==(const Reach &) const = default;
};

Reach reach(const Picture &picture, const Picture &bare, double scale)
{
    Reach reach{.top = size.height()};
    for (double y = 0; y < size.height(); y += 1 / scale) {
        const double middle = size.height() - y - 0.5 / scale;
        if (picture.at(22, middle) != bare.at(22, middle)) {
            reach.top = std::min(reach.top, y);
            reach.bottom = y + 1 / scale;
        }
    }
    return reach;
}
} // namespace

class MetalGlyphButtonCellTest : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void init() { QTest::failOnWarning(QRegularExpression(QStringLiteral(".*"))); }

    void withoutAnImageItIsNothingButABezel()
    {
        for (const double scale : {1.0, 2.0}) {
            for (const bool isPressed : {false, true}) {
                const MetalButtonState state{.title = QStringLiteral("Done"), .isPressed = isPressed};
                QCOMPARE(drawn<MetalGlyphButtonCell>(state, scale), bare(scale, isPressed));
            }
        }
    }

    void theImageIsAPointLowerOnAFineScreen()
    {
        QCOMPARE(reach(glyph(1, true), bare(1, true), 1), (Reach{5, 21}));
        QCOMPARE(reach(glyph(2, true), bare(2, true), 2), (Reach{5.5, 20.5}));
    }

    void theImageFillsTheMiddleWhateverItsProportions()
    {
        const Picture picture = glyph(1, true);
        QVERIFY(picture.at(12.5, 17) != bare(1, true).at(12.5, 17));
        QVERIFY(picture.at(31.5, 17) != bare(1, true).at(31.5, 17));
        QCOMPARE(picture.at(11.5, 17), bare(1, true).at(11.5, 17));
        QCOMPARE(picture.at(32.5, 17), bare(1, true).at(32.5, 17));
    }

    void anImageAtRestHasALipOfHalfAPointAtEveryScale()
    {
        QCOMPARE(reach(glyph(2), bare(2), 2), (Reach{5.5, 21}));
        QVERIFY(glyph(2).at(22, size.height() - 20.75).lightness() > bare(2).at(22, size.height() - 20.75).lightness());
        QCOMPARE(reach(glyph(1), bare(1), 1), (Reach{5, 22}));
        QVERIFY(glyph(1).at(22, size.height() - 21.5).lightness() > bare(1).at(22, size.height() - 21.5).lightness());
    }

    void itLooksTheSameInEveryWindowAndWhenDisabled()
    {
        QCOMPARE(drawn<MetalGlyphButtonCell>({.image = knob, .isMainWindow = true}, 1), glyph(1));
        QCOMPARE(drawn<MetalGlyphButtonCell>({.image = knob, .isEnabled = false}, 1), glyph(1));
    }
};

} // namespace tunedeck

TUNEDECK_TEST(tunedeck::MetalGlyphButtonCellTest, QApplication)
#include "MetalGlyphButtonCellTest.moc"
