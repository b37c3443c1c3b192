// SPDX-License-Identifier: MIT
#include "skin/drawing/DevicePixels.h"

#include "skin/drawing/flipY.h"
#include "support/registerTest.h"

#include <QApplication>
#include <QImage>
#include <QPainter>
#include <QRegularExpression>
#include <QTest>

using namespace tunedeck;

namespace {
struct Canvas {
    explicit Canvas(double scale)
    {
        image.setDevicePixelRatio(scale);
        painter.begin(&image);
    }

    QImage image{60, 60, QImage::Format_ARGB32_Premultiplied};
    QPainter painter;
};
} // namespace

class DevicePixelsTest : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void init() { QTest::failOnWarning(QRegularExpression(QStringLiteral(".*"))); }

    void atAWholeScaleAllStaysAsItIs()
    {
        for (const double scale : {1.0, 2.0, 3.0}) {
            const Canvas canvas(scale);
            const DevicePixels pixels(canvas.painter);
            QCOMPARE(pixels.snapped({0.3, 1.25, 3.1, 0.1}), QRectF(0.3, 1.25, 3.1, 0.1));
            QCOMPARE(pixels.lineWidth(0.5), 0.5);
            QCOMPARE(pixels.lineWidth(0.75), 0.75);
        }
    }

    void atAFractionalScaleEdgesLieOnTheNearestDevicePixel()
    {
        const Canvas quarter(1.25);
        // From 1.25 to 5 across and from 2.5 to 8.75 down.
        QCOMPARE(DevicePixels(quarter.painter).snapped({1, 2, 3, 5}), QRectF(0.8, 2.4, 3.2, 4.8));
        const Canvas half(1.5);
        // From 3 to 7.5 across and from 4.5 to 6 down.
        QCOMPARE(DevicePixels(half.painter).snapped({2, 3, 3, 1}), QRectF(2, 10 / 3.0, 10 / 3.0, 2 / 3.0));
    }

    void edgesLieOnDevicePixelsWhereverThePainterIs()
    {
        Canvas canvas(1.25);
        canvas.painter.translate(3, 0);
        flipY(canvas.painter, 25);
        // Down from 31.25, which is nearest to 31, to 30; across from 5 to 7.5.
        QCOMPARE(DevicePixels(canvas.painter).snapped({1, 0, 2, 1}), QRectF(1, 0.2, 2.4, 0.8));
    }

    void noSideIsLost()
    {
        const Canvas canvas(1.25);
        QCOMPARE(DevicePixels(canvas.painter).snapped({4, 8, 0.1, 0.2}), QRectF(4, 8, 0.8, 0.8));
    }

    void aLineIsAsWideAsTheWholePixelsInItAndNeverWithoutOne()
    {
        const Canvas quarter(1.25);
        QCOMPARE(DevicePixels(quarter.painter).lineWidth(0.5), 0.8);
        QCOMPARE(DevicePixels(quarter.painter).lineWidth(1), 0.8);
        QCOMPARE(DevicePixels(quarter.painter).lineWidth(2), 1.6);
        const Canvas half(1.5);
        QCOMPARE(DevicePixels(half.painter).lineWidth(1), 1 / 1.5);
        QCOMPARE(DevicePixels(half.painter).lineWidth(2), 2.0);
    }

    void aHairlineIsHalfAPointWhereAPointHasSeveralPixels()
    {
        QCOMPARE(DevicePixels(Canvas(1).painter).hairline(), 1.0);
        QCOMPARE(DevicePixels(Canvas(1.25).painter).hairline(), 0.8);
        QCOMPARE(DevicePixels(Canvas(1.5).painter).hairline(), 1 / 1.5);
        QCOMPARE(DevicePixels(Canvas(2).painter).hairline(), 0.5);
    }
};

TUNEDECK_TEST(DevicePixelsTest, QApplication)
#include "DevicePixelsTest.moc"
