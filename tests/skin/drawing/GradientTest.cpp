// SPDX-License-Identifier: MIT
#include "skin/drawing/Gradient.h"
#include "support/registerTest.h"

#include <QApplication>
#include <QImage>
#include <QPainter>
#include <QPainterPath>
#include <QRegularExpression>
#include <QTest>

#include <cmath>
#include <cstdlib>

namespace tunedeck {

namespace {
constexpr QColor start(0, 0, 0);
constexpr QColor end(255, 255, 255);
const QRectF picture(0, 0, 100, 100);

QPainterPath rectangle(const QRectF &rect)
{
    QPainterPath path;
    path.addRect(rect);
    return path;
}

QImage filled(const QBrush &brush, QSize size = picture.size().toSize())
{
    QImage image(size, QImage::Format_ARGB32_Premultiplied);
    image.fill(Qt::transparent);
    QPainter(&image).fillRect(image.rect(), brush);
    return image;
}

int redAt(const QImage &image, int x, int y)
{
    return image.pixelColor(x, y).red();
}

/// The red of a pixel in a gradient from black to white is its location.
bool isAt(double location, const QImage &image, int x, int y)
{
    return std::abs(redAt(image, x, y) - location * 255) <= 1.5;
}
} // namespace

class GradientTest : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void init() { QTest::failOnWarning(QRegularExpression(QStringLiteral(".*"))); }

    void angle0IsTowardsLargerX()
    {
        const QImage image = filled(Gradient({{start, 0}, {end, 1}}).linearBrush(picture, 0));
        QVERIFY(isAt(0.005, image, 0, 50));
        QVERIFY(isAt(0.255, image, 25, 10));
        QVERIFY(isAt(0.995, image, 99, 50));
    }

    void angle90IsTowardsLargerYAndMinus90TowardsSmaller()
    {
        const QImage up = filled(Gradient({{start, 0}, {end, 1}}).linearBrush(picture, 90));
        QVERIFY(isAt(0.005, up, 50, 0));
        QVERIFY(isAt(0.755, up, 50, 75));
        const QImage down = filled(Gradient({{start, 0}, {end, 1}}).linearBrush(picture, -90));
        QVERIFY(isAt(0.995, down, 50, 0));
        QVERIFY(isAt(0.245, down, 50, 75));
    }

    void atAnObliqueAngleTheEndsFallOnTheFarthestCorners()
    {
        // From (0, 0) to (80, 40) along (0.8, 0.6) it is 80 * 0.8 + 40 * 0.6 = 88.
        const double angle = std::atan2(0.6, 0.8) * 180 / M_PI;
        const QImage image = filled(Gradient({{start, 0}, {end, 1}}).linearBrush({0, 0, 80, 40}, angle), {80, 40});
        QVERIFY(isAt(0.7 / 88, image, 0, 0));
        QVERIFY(isAt(87.3 / 88, image, 79, 39));
        QVERIFY(isAt(44.7 / 88, image, 40, 20));
        QVERIFY(isAt((79.5 * 0.8 + 0.5 * 0.6) / 88, image, 79, 0));
        QVERIFY(isAt((0.5 * 0.8 + 39.5 * 0.6) / 88, image, 0, 39));
    }

    void aDirectionToTheLeftAndDownBeginsAtTheOppositeCorner()
    {
        // cos(-118 deg) = -0.46947, sin(-118 deg) = -0.88295; over 100 by 100 its length is 135.242.
        const QImage image = filled(Gradient({{start, 0}, {end, 1}}).linearBrush(picture, -118));
        QVERIFY(isAt(0.005, image, 99, 99));
        QVERIFY(isAt(0.995, image, 0, 0));
        QVERIFY(isAt(99.5 * 0.88295 / 135.242 + 0.5 * 0.46947 / 135.242, image, 99, 0));
    }

    void aCentredRadialGradientEndsAtTheCorners()
    {
        const QImage image = filled(Gradient({{start, 0}, {end, 1}}).radialBrush(picture, {0, 0}));
        QVERIFY(redAt(image, 50, 50) <= 3);
        QVERIFY(isAt(std::hypot(30.5, 0.5) / std::hypot(50, 50), image, 80, 50));
        QVERIFY(isAt(std::hypot(30.5, 40.5) / std::hypot(50, 50), image, 80, 90));
        QVERIFY(redAt(image, 0, 0) >= 252);
    }

    void theEndCircleOfARadialGradientMayLieElsewhere()
    {
        // The end circle's centre is (50, 100); it covers the corner (0, 0) with a radius of hypot(50, 100) = 111.803.
        const QImage image = filled(Gradient({{start, 0}, {end, 1}}).radialBrush(picture, {0, 1}));
        QVERIFY(redAt(image, 50, 50) <= 4);
        // Straight up from (50, 50) circle t ends at 50 + 50t + 111.803t, straight down at 50 + 50t - 111.803t.
        QVERIFY(isAt(40.5 / 161.803, image, 50, 90));
        QVERIFY(isAt(39.5 / 61.803, image, 50, 10));
        QVERIFY(redAt(image, 0, 0) >= 252);
    }

    void relativeCentresCountInHalvesOfEachSide()
    {
        const QRectF bounds(0, 0, 80, 40);
        const QImage image = filled(Gradient({{start, 0}, {end, 1}}).radialBrush(bounds, {0.5, 0}), {80, 40});
        // The centre moves from x 40 to 60; the farthest corner is hypot(60, 20) = 63.246 from there.
        QVERIFY(isAt(29.5 / (20 + 63.246), image, 69, 20));
        QVERIFY(isAt(29.5 / (63.246 - 20), image, 10, 20));
    }

    void twoStopsAtOneLocationMakeAHardEdge()
    {
        const QImage image = filled(Gradient({{start, 0}, {start, 0.5}, {end, 0.5}, {end, 1}}).linearBrush(picture, 0));
        QCOMPARE(redAt(image, 0, 0), 0);
        QCOMPARE(redAt(image, 49, 0), 0);
        QCOMPARE(redAt(image, 50, 0), 255);
        QCOMPARE(redAt(image, 99, 0), 255);
    }

    void theColorsOnBothSidesOfAHardEdgeAreReached()
    {
        const Gradient gradient({{start, 0}, {QColor(100, 100, 100), 0.5}, {QColor(200, 200, 200), 0.5}, {end, 1}});
        const QImage image = filled(gradient.linearBrush(picture, 0));
        QVERIFY(std::abs(redAt(image, 49, 0) - 99) <= 1);
        QVERIFY(std::abs(redAt(image, 50, 0) - 200) <= 1);
    }

    void theEndColorsGoOnBeyondTheStops()
    {
        const QImage image = filled(Gradient({{start, 0.25}, {end, 0.75}}).linearBrush({20, 0, 60, 100}, 0));
        QCOMPARE(redAt(image, 0, 0), 0);
        QCOMPARE(redAt(image, 34, 0), 0);
        QVERIFY(isAt(0.5 + 0.5 / 30, image, 50, 0));
        QCOMPARE(redAt(image, 65, 0), 255);
        QCOMPARE(redAt(image, 99, 0), 255);
    }

    void colorsOfDifferentAlphaAreMixedAsTheyAre()
    {
        // Premultiplied, the clear white end would not lighten the middle.
        const Gradient gradient({{QColor(0, 0, 0, 255), 0}, {QColor(255, 255, 255, 0), 1}});
        const QColor middle = filled(gradient.linearBrush(picture, 0)).pixelColor(50, 50);
        QVERIFY(std::abs(middle.alpha() - 127) <= 2);
        QVERIFY(std::abs(middle.red() - 128) <= 2);
    }

    void aPathIsFilledOverItsTightBounds()
    {
        // The control points of the curve reach up to y = 100, the curve itself up to 75.
        QPainterPath path;
        path.moveTo(0, 0);
        path.cubicTo(0, 100, 100, 100, 100, 0);
        path.closeSubpath();
        QImage image(100, 100, QImage::Format_ARGB32_Premultiplied);
        image.fill(Qt::transparent);
        QPainter painter(&image);
        Gradient({{start, 0}, {end, 1}}).drawInPath(painter, path, 90);
        painter.end();
        QVERIFY(isAt(0.5 / 75, image, 50, 0));
        QVERIFY(isAt(73.5 / 75, image, 50, 73));
        QCOMPARE(image.pixelColor(50, 76).alpha(), 0);
        QCOMPARE(image.pixelColor(1, 60).alpha(), 0);
    }

    void aPathIsFilledRadiallyToo()
    {
        QImage image(100, 100, QImage::Format_ARGB32_Premultiplied);
        image.fill(Qt::transparent);
        QPainter painter(&image);
        Gradient({{start, 0}, {end, 1}}).drawInPath(painter, rectangle({20, 20, 60, 60}), QPointF(0, 0));
        painter.end();
        QCOMPARE(image.pixelColor(10, 50).alpha(), 0);
        QVERIFY(isAt(std::hypot(20.5, 0.5) / std::hypot(30, 30), image, 70, 50));
    }

    void inATurnedPainterTheAngleTurnsWithIt()
    {
        QImage image(100, 100, QImage::Format_ARGB32_Premultiplied);
        image.fill(Qt::transparent);
        QPainter painter(&image);
        painter.translate(0, 100);
        painter.scale(1, -1);
        Gradient({{start, 0}, {end, 1}}).drawInPath(painter, rectangle(picture), -90.0);
        painter.end();
        QVERIFY(isAt(0.005, image, 50, 0));
        QVERIFY(isAt(0.995, image, 50, 99));
    }
};

} // namespace tunedeck

TUNEDECK_TEST(tunedeck::GradientTest, QApplication)
#include "GradientTest.moc"
