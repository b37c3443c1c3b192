// SPDX-License-Identifier: MIT
#include "skin/drawing/Shadow.h"
#include "support/registerTest.h"

#include <QApplication>
#include <QImage>
#include <QPainter>
#include <QPainterPath>
#include <QRegularExpression>
#include <QTest>

#include <cmath>
#include <cstdlib>
#include <functional>

namespace tunedeck {

namespace {
constexpr int side = 40;

QPainterPath rectangle(const QRectF &rect)
{
    QPainterPath path;
    path.addRect(rect);
    return path;
}

/// A picture of 40 by 40 points, `scale` device pixels each.
QImage drawn(const std::function<void(QPainter &)> &draw, double scale = 1)
{
    const int pixels = qRound(side * scale);
    QImage image(pixels, pixels, QImage::Format_ARGB32_Premultiplied);
    image.setDevicePixelRatio(scale);
    image.fill(Qt::transparent);
    QPainter painter(&image);
    painter.setRenderHint(QPainter::Antialiasing);
    draw(painter);
    return image;
}

void turn(QPainter &painter)
{
    painter.translate(0, side);
    painter.scale(1, -1);
}

int alphaAt(const QImage &image, int x, int y)
{
    return qAlpha(image.pixel(x, y));
}

bool isAbout(int expected, int actual, int tolerance = 1)
{
    return std::abs(expected - actual) <= tolerance;
}

/// The coverage after a blur at `distance` inside a straight edge.
double edge(double distance, double deviation)
{
    return (1 + std::erf(distance / (deviation * std::sqrt(2)))) / 2;
}
} // namespace

class ShadowTest : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void init() { QTest::failOnWarning(QRegularExpression(QStringLiteral(".*"))); }

    void withoutBlurTheShadowIsAHardCopy()
    {
        const QImage image = drawn([](QPainter &painter) {
            drawShadow(painter, rectangle({10, 10, 10, 10}), {.offset = {3, -2}, .blurRadius = 0});
        });
        QCOMPARE(alphaAt(image, 12, 15), 0);
        QCOMPARE(alphaAt(image, 13, 15), 255);
        QCOMPARE(alphaAt(image, 22, 15), 255);
        QCOMPARE(alphaAt(image, 23, 15), 0);
        QCOMPARE(alphaAt(image, 15, 11), 0);
        QCOMPARE(alphaAt(image, 15, 12), 255);
        QCOMPARE(alphaAt(image, 15, 21), 255);
        QCOMPARE(alphaAt(image, 15, 22), 0);
    }

    void aPositiveOffsetIsToTheRightAndUpOnTheScreenHoweverThePainterIsTurned()
    {
        const Shadow shadow{.offset = {3, 4}, .blurRadius = 0};
        const QImage unturned =
            drawn([&](QPainter &painter) { drawShadow(painter, rectangle({10, 10, 5, 5}), shadow); });
        const QImage turned = drawn([&](QPainter &painter) {
            turn(painter);
            drawShadow(painter, rectangle({10, side - 15, 5, 5}), shadow);
        });
        QCOMPARE(turned, unturned);
        QCOMPARE(alphaAt(unturned, 13, 6), 255);
        QCOMPARE(alphaAt(unturned, 17, 10), 255);
        QCOMPARE(alphaAt(unturned, 13, 5), 0);
        QCOMPARE(alphaAt(unturned, 12, 6), 0);
    }

    void offsetsCountInPointsAtEveryScale()
    {
        const QImage image = drawn(
            [](QPainter &painter) {
                drawShadow(painter, rectangle({10, 10, 10, 10}), {.offset = {0, -1.5}, .blurRadius = 0});
            },
            2);
        QCOMPARE(alphaAt(image, 30, 22), 0);
        QCOMPARE(alphaAt(image, 30, 23), 255);
        QCOMPARE(alphaAt(image, 30, 42), 255);
        QCOMPARE(alphaAt(image, 30, 43), 0);
    }

    void aPartOfAPixelIsAPartOfTheShadow()
    {
        const QImage image = drawn([](QPainter &painter) {
            drawShadow(painter, rectangle({10, 10, 10, 10}), {.offset = {0, -1.5}, .blurRadius = 0});
        });
        QVERIFY(isAbout(128, alphaAt(image, 15, 11)));
        QCOMPARE(alphaAt(image, 15, 12), 255);
        QVERIFY(isAbout(128, alphaAt(image, 15, 21)));
        QCOMPARE(alphaAt(image, 15, 22), 0);
    }

    void theBlurIsAGaussianOfHalfTheRadius_data()
    {
        QTest::addColumn<double>("scale");
        QTest::newRow("scale 1") << 1.0;
        QTest::newRow("scale 1.5") << 1.5;
        QTest::newRow("scale 2") << 2.0;
    }

    void theBlurIsAGaussianOfHalfTheRadius()
    {
        QFETCH(const double, scale);
        // A half plane as far as the picture goes: its left edge is at x = 20.
        const QImage image = drawn(
            [](QPainter &painter) {
                drawShadow(painter, rectangle({20, -100, 200, 300}), {.offset = {}, .blurRadius = 4});
            },
            scale);
        const int y = qRound(20 * scale);
        for (int x = 0; x < image.width(); ++x) {
            const double distance = (x + 0.5) / scale - 20;
            QVERIFY(isAbout(qRound(255 * edge(distance, 2)), alphaAt(image, x, y), 2));
        }
        QVERIFY(alphaAt(image, qRound(15 * scale), y) > 0);
        QCOMPARE(alphaAt(image, qRound(8 * scale), y), 0);
    }

    void theBlurIsAsWideUpAndDownAsToTheSides()
    {
        const QImage image = drawn([](QPainter &painter) {
            drawShadow(painter, rectangle({18, 14, 4, 12}), {.offset = {}, .blurRadius = 5});
        });
        // A corner is the product of both edges.
        const double across = edge(2.5, 2.5) - edge(-1.5, 2.5);
        const double along = edge(0.5, 2.5) - edge(-11.5, 2.5);
        QVERIFY(isAbout(qRound(255 * across * along), alphaAt(image, 20, 14), 2));
        QCOMPARE(alphaAt(image, 20, 14), alphaAt(image, 20, 25));
        QCOMPARE(alphaAt(image, 17, 14), alphaAt(image, 22, 25));
    }

    void theColorAndItsAlphaAreThoseOfTheShadow()
    {
        const QImage image = drawn([](QPainter &painter) {
            drawShadow(painter, rectangle({10, 10, 10, 10}),
                {.offset = {}, .blurRadius = 0, .color = QColor::fromRgbF(1, 0.5F, 0, 0.6F)});
        });
        const QColor color = image.pixelColor(15, 15);
        QCOMPARE(color.alpha(), 153);
        QCOMPARE(color.red(), 255);
        QVERIFY(isAbout(128, color.green()));
        QCOMPARE(color.blue(), 0);
    }

    void aHoleOfTheShapeIsAHoleOfItsShadow()
    {
        const QImage image = drawn([](QPainter &painter) {
            QPainterPath ring = rectangle({10, 10, 20, 20});
            ring.addRect(15, 15, 10, 10);
            drawShadow(painter, ring, {.offset = {}, .blurRadius = 0});
        });
        QCOMPARE(alphaAt(image, 12, 20), 255);
        QCOMPARE(alphaAt(image, 20, 20), 0);
    }

    void anInnerShadowHugsTheEdgeThatTheShadowComesFrom_data()
    {
        QTest::addColumn<double>("scale");
        QTest::addColumn<bool>("isTurned");
        QTest::newRow("scale 1") << 1.0 << false;
        QTest::newRow("scale 2") << 2.0 << false;
        QTest::newRow("scale 1, turned") << 1.0 << true;
        QTest::newRow("scale 2, turned") << 2.0 << true;
    }

    void anInnerShadowHugsTheEdgeThatTheShadowComesFrom()
    {
        QFETCH(const double, scale);
        QFETCH(const bool, isTurned);
        const QImage image = drawn(
            [isTurned](QPainter &painter) {
                if (isTurned) {
                    turn(painter);
                }
                fillWithInnerShadow(painter, rectangle({5, 5, 30, 30}), {.offset = {0, -3}, .blurRadius = 4});
            },
            scale);
        const int middle = qRound(20 * scale);
        for (int y = 0; y < image.height(); ++y) {
            const double fromTop = (y + 0.5) / scale - 5;
            const bool isInside = fromTop > 0 && fromTop < 30;
            // The world's lower edge is moved down by 3, and so is its upper edge, out of the hole.
            const double part = isInside ? 1 - edge(fromTop - 3, 2) + edge(fromTop - 33, 2) : 0;
            QVERIFY(isAbout(qRound(255 * part), alphaAt(image, middle, y), 3));
        }
        QVERIFY(alphaAt(image, middle, qRound(5 * scale)) > 210);
        QVERIFY(alphaAt(image, middle, qRound(33 * scale)) < 20);
    }

    void withoutBlurAnInnerShadowIsTheStripThatTheOffsetLaysBare()
    {
        const QImage image = drawn([](QPainter &painter) {
            fillWithInnerShadow(painter, rectangle({5, 5, 30, 30}), {.offset = {2, -3}, .blurRadius = 0});
        });
        QCOMPARE(alphaAt(image, 20, 4), 0);
        QCOMPARE(alphaAt(image, 20, 5), 255);
        QCOMPARE(alphaAt(image, 20, 7), 255);
        QCOMPARE(alphaAt(image, 20, 8), 0);
        QCOMPARE(alphaAt(image, 4, 20), 0);
        QCOMPARE(alphaAt(image, 6, 20), 255);
        QCOMPARE(alphaAt(image, 7, 20), 0);
        QCOMPARE(alphaAt(image, 34, 20), 0);
        QCOMPARE(alphaAt(image, 20, 34), 0);
    }

    void anInnerShadowStaysInsideARoundPathWithASoftEdge()
    {
        const QImage image = drawn([](QPainter &painter) {
            QPainterPath circle;
            circle.addEllipse(QRectF(5, 5, 30, 30));
            fillWithInnerShadow(painter, circle, {.offset = {0, -40}, .blurRadius = 1});
        });
        const QImage circle = drawn([](QPainter &painter) {
            painter.setPen(Qt::NoPen);
            painter.setBrush(Qt::black);
            painter.drawEllipse(QRectF(5, 5, 30, 30));
        });
        for (int y = 0; y < side; ++y) {
            for (int x = 0; x < side; ++x) {
                QVERIFY(isAbout(alphaAt(circle, x, y), alphaAt(image, x, y), 2));
            }
        }
    }

    void everySecondPointHasAScanLine()
    {
        const QImage image =
            drawn([](QPainter &painter) { fillWithScanLines(painter, rectangle({0, 0, 30, 7}), 30, true); });
        for (int y = 0; y < side; ++y) {
            const bool hasLine = y == 0 || y == 2 || y == 4 || y == 6;
            QVERIFY(isAbout(hasLine ? 26 : 0, alphaAt(image, 10, y), hasLine ? 1 : 0));
        }
        QCOMPARE(alphaAt(image, 30, 0), 0);
    }

    void lightScanLinesAreOf4Percent()
    {
        const QImage image =
            drawn([](QPainter &painter) { fillWithScanLines(painter, rectangle({0, 0, 30, 7}), 30, false); });
        QCOMPARE(alphaAt(image, 10, 0), 10);
        QCOMPARE(alphaAt(image, 10, 1), 0);
    }

    void scanLinesCountFromTheBottomWhereThePainterIsTurned()
    {
        const QImage image = drawn(
            [](QPainter &painter) {
                turn(painter);
                fillWithScanLines(painter, rectangle({0, 0, 30, 7}), 30, true);
            },
            2);
        for (const int y : {79, 78, 75, 74, 71, 70, 67, 66}) {
            QVERIFY(isAbout(26, alphaAt(image, 10, y)));
        }
        for (const int y : {77, 76, 73, 72, 69, 68, 65, 64}) {
            QCOMPARE(alphaAt(image, 10, y), 0);
        }
    }

    void scanLinesStopAtThePathsHeightAndStayInsideThePath()
    {
        // Lines at 0, 2 and 4 alone, though the path reaches from 3 to 9: its height of 6 counts from 0.
        const QImage image =
            drawn([](QPainter &painter) { fillWithScanLines(painter, rectangle({5, 3, 10, 6}), 12, true); });
        for (int y = 0; y < side; ++y) {
            QVERIFY(isAbout(y == 4 ? 26 : 0, alphaAt(image, 8, y)));
        }
        QCOMPARE(alphaAt(image, 4, 4), 0);
        QVERIFY(alphaAt(image, 11, 4) > 0);
        QCOMPARE(alphaAt(image, 12, 4), 0);
    }

    void theFirstScanLineIsDrawnInAPathThatIsLowerThanTheStride()
    {
        const QImage image =
            drawn([](QPainter &painter) { fillWithScanLines(painter, rectangle({0, 0, 30, 1}), 30, true); });
        QVERIFY(isAbout(26, alphaAt(image, 10, 0)));
        QCOMPARE(alphaAt(image, 10, 2), 0);
    }

    void inARoundPathScanLinesHaveSoftEnds()
    {
        QPainterPath circle;
        circle.addEllipse(QRectF(0, 0, 30, 30));
        const QImage lines = drawn([&](QPainter &painter) { fillWithScanLines(painter, circle, 30, true); });
        const QImage disc = drawn([&](QPainter &painter) { painter.fillPath(circle, QColor(0, 0, 0, 26)); });
        for (int x = 0; x < side; ++x) {
            QVERIFY(isAbout(alphaAt(disc, x, 4), alphaAt(lines, x, 4)));
            QCOMPARE(alphaAt(lines, x, 5), 0);
        }
    }

    void aPathOfNoHeightHasNoScanLines()
    {
        const QImage image =
            drawn([](QPainter &painter) { fillWithScanLines(painter, rectangle({0, 0, 30, 0}), 30, true); });
        QCOMPARE(image, drawn([](QPainter &) { }));
    }

    void theClipOfThePainterHolds()
    {
        const QImage image = drawn([](QPainter &painter) {
            painter.setClipRect(QRectF(0, 0, 20, 40));
            const QPainterPath path = rectangle({10, 0, 20, 20});
            drawShadow(painter, path, {.offset = {}, .blurRadius = 0});
            fillWithInnerShadow(painter, path, {.offset = {0, -50}, .blurRadius = 0});
            fillWithScanLines(painter, path, 40, true);
        });
        QVERIFY(alphaAt(image, 19, 10) > 0);
        QCOMPARE(alphaAt(image, 20, 10), 0);
    }
};

} // namespace tunedeck

TUNEDECK_TEST(tunedeck::ShadowTest, QApplication)
#include "ShadowTest.moc"
