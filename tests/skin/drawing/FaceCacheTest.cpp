// SPDX-License-Identifier: MIT
#include "skin/drawing/FaceCache.h"
#include "support/registerTest.h"

#include <QApplication>
#include <QImage>
#include <QRegularExpression>
#include <QTest>

namespace tunedeck {

namespace {
/// A face of one color, its state, and how often it was drawn.
class Faces {
public:
    void put(QPainter &painter, const QRect &frame, QRgb color)
    {
        m_cache.draw(painter, frame, color, [this, frame, color](QPainter &face) {
            ++drawn;
            face.fillRect(QRect(QPoint(0, 0), frame.size()), QColor::fromRgba(color));
        });
    }

    int drawn = 0;

private:
    FaceCache<QRgb> m_cache;
};

QImage ground(double scale = 1)
{
    QImage image((QSizeF(40, 40) * scale).toSize(), QImage::Format_ARGB32_Premultiplied);
    image.setDevicePixelRatio(scale);
    image.fill(Qt::transparent);
    return image;
}

constexpr QRgb red = 0xffff0000;
constexpr QRgb green = 0xff00ff00;
constexpr QRect frame(4, 6, 10, 8);
} // namespace

class FaceCacheTest : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void init() { QTest::failOnWarning(QRegularExpression(QStringLiteral(".*"))); }

    void aFaceIsDrawnIntoItsFrame_data()
    {
        QTest::addColumn<double>("scale");
        for (const double scale : {1.0, 1.25, 1.5, 2.0}) {
            QTest::addRow("scale %g", scale) << scale;
        }
    }

    void aFaceIsDrawnIntoItsFrame()
    {
        QFETCH(const double, scale);
        QImage image = ground(scale);
        QPainter painter(&image);
        Faces faces;
        faces.put(painter, QRect(4, 8, 8, 12), red);
        const int left = qRound(4 * scale);
        const int top = qRound(8 * scale);
        QCOMPARE(image.pixel(left, top), red);
        QCOMPARE(image.pixel(left - 1, top), 0U);
        QCOMPARE(image.pixel(left, top - 1), 0U);
        const int right = qRound(12 * scale) - 1;
        const int bottom = qRound(20 * scale) - 1;
        QCOMPARE(image.pixel(right, bottom), red);
        QCOMPARE(image.pixel(right + 1, bottom), 0U);
        QCOMPARE(image.pixel(right, bottom + 1), 0U);
    }

    void whereAFrameBeginsBetweenPixelsTheFaceStaysSharp()
    {
        QImage image = ground(1.5);
        QPainter painter(&image);
        Faces faces;
        faces.put(painter, QRect(5, 8, 8, 8), red);
        for (int x = 0; x < image.width(); ++x) {
            const QRgb pixel = image.pixel(x, 15);
            QVERIFY(pixel == 0U || pixel == red);
        }
    }

    void whatWasDrawnOnceIsNotDrawnAgain()
    {
        QImage image = ground();
        QPainter painter(&image);
        Faces faces;
        faces.put(painter, frame, red);
        image.fill(Qt::transparent);
        faces.put(painter, frame.translated(20, 0), red);
        QCOMPARE(faces.drawn, 1);
        QCOMPARE(image.pixel(24, 6), red);
    }

    void anotherStateIsDrawnAndTheOldOneKept()
    {
        QImage image = ground();
        QPainter painter(&image);
        Faces faces;
        faces.put(painter, frame, red);
        faces.put(painter, frame, green);
        QCOMPARE(image.pixel(4, 6), green);
        faces.put(painter, frame, red);
        QCOMPARE(image.pixel(4, 6), red);
        QCOMPARE(faces.drawn, 2);
    }

    void anotherSizeIsDrawnAnewAndTheOldOneDropped()
    {
        QImage image = ground();
        QPainter painter(&image);
        Faces faces;
        faces.put(painter, frame, red);
        faces.put(painter, frame.adjusted(0, 0, 1, 0), red);
        faces.put(painter, frame, red);
        QCOMPARE(faces.drawn, 3);
    }

    void anotherScaleIsDrawnAnew()
    {
        QImage image = ground();
        QImage largeImage = ground(2);
        Faces faces;
        QPainter painter(&image);
        faces.put(painter, frame, red);
        QPainter largePainter(&largeImage);
        faces.put(largePainter, frame, red);
        QCOMPARE(faces.drawn, 2);
        QCOMPARE(largeImage.pixel(27, 27), red);
    }

    void theScaleIsThatOfWhatIsPaintedOnEvenIfTheDeviceSaysAnother()
    {
        QImage image = ground();
        QPainter painter(&image);
        painter.scale(2, 2);
        Faces().put(painter, {2, 3, 10, 8}, red);
        QCOMPARE(image.pixel(4, 6), red);
        QCOMPARE(image.pixel(23, 21), red);
        QCOMPARE(image.pixel(24, 21), 0U);
        QCOMPARE(image.pixel(23, 22), 0U);
    }

    void onlySomeStatesAreKept()
    {
        QImage image = ground();
        QPainter painter(&image);
        Faces faces;
        for (QRgb blue = 0; blue <= 4; ++blue) {
            faces.put(painter, frame, 0xff000000 + blue);
        }
        QCOMPARE(faces.drawn, 5);
        faces.put(painter, frame, 0xff000001);
        QCOMPARE(faces.drawn, 5);
        faces.put(painter, frame, 0xff000000);
        QCOMPARE(faces.drawn, 6);
    }

    void aFaceOfNoSizeIsNotDrawn()
    {
        QImage image = ground();
        QPainter painter(&image);
        Faces faces;
        faces.put(painter, QRect(4, 6, 0, 8), red);
        QCOMPARE(faces.drawn, 0);
        QCOMPARE(image, ground());
    }

    void thePainterIsLeftAsItWas()
    {
        QImage image = ground(2);
        QPainter painter(&image);
        painter.translate(3, 5);
        const QTransform before = painter.worldTransform();
        Faces faces;
        faces.put(painter, frame, red);
        QCOMPARE(painter.worldTransform(), before);
        QCOMPARE(image.pixel(14, 22), red);
        QCOMPARE(image.pixel(13, 22), 0U);
    }
};

} // namespace tunedeck

TUNEDECK_TEST(tunedeck::FaceCacheTest, QApplication)
#include "FaceCacheTest.moc"
