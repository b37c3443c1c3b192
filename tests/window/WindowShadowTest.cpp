// SPDX-License-Identifier: MIT
#include "window/WindowShadow.h"
#include "support/registerTest.h"

#include <QApplication>
#include <QImage>
#include <QPainter>
#include <QRegularExpression>
#include <QTest>

using namespace tunedeck;

namespace {
constexpr int cornerRadius = 4;

/// A window of `size` points in its shadow.
QImage shadowOf(QSize size, double scale = 1)
{
    QImage image(size.grownBy(WindowShadow::reach) * scale, QImage::Format_ARGB32_Premultiplied);
    image.setDevicePixelRatio(scale);
    image.fill(Qt::transparent);
    QPainter painter(&image);
    WindowShadow(cornerRadius).draw(painter, {{WindowShadow::reach.left(), WindowShadow::reach.top()}, size});
    return image;
}
} // namespace

class WindowShadowTest : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void init() { QTest::failOnWarning(QRegularExpression(QStringLiteral(".*"))); }

    void nothingOfItIsInsideTheWindow()
    {
        const QImage image = shadowOf({450, 64});
        const QMargins reach = WindowShadow::reach;
        const QRect window = image.rect().marginsRemoved(reach);
        for (const QPoint inside :
            {window.center(), window.topLeft() + QPoint(2, 2), window.bottomRight() - QPoint(2, 2),
                QPoint(window.left(), window.center().y()), QPoint(window.center().x(), window.bottom())}) {
            QCOMPARE(image.pixelColor(inside).alpha(), 0);
        }
    }

    void itFadesOutWithinItsReach()
    {
        const QImage image = shadowOf({450, 64});
        const int x = image.width() / 2;
        const int below = image.height() - WindowShadow::reach.bottom();
        QVERIFY(image.pixelColor(x, below).alpha() > 60);
        for (int y = below + 1; y < image.height(); ++y) {
            QVERIFY(image.pixelColor(x, y).alpha() <= image.pixelColor(x, y - 1).alpha());
        }
        for (const QPoint end : {QPoint(x, 0), QPoint(x, image.height() - 1), QPoint(0, image.height() / 2),
                 QPoint(image.width() - 1, image.height() / 2)}) {
            QVERIFY(image.pixelColor(end).alpha() <= 4);
        }
    }

    void itComesFromAboveAndIsTheSameAtBothSides()
    {
        const QImage image = shadowOf({450, 64});
        const QMargins reach = WindowShadow::reach;
        const int x = image.width() / 2;
        QVERIFY(image.pixelColor(x, image.height() - reach.bottom() + 2).alpha()
            > image.pixelColor(x, reach.top() - 3).alpha());
        const int middle = image.height() / 2;
        for (int left = 0; left < reach.left(); ++left) {
            const int right = image.width() - 1 - left;
            QVERIFY(qAbs(image.pixelColor(left, middle).alpha() - image.pixelColor(right, middle).alpha()) <= 1);
        }
    }

    void itsCornersAreTheSameWhateverTheWindowsSize()
    {
        const QRect corner(0, 0, 40, 40);
        QCOMPARE(shadowOf({450, 124}).copy(corner), shadowOf({350, 640}).copy(corner));
        QCOMPARE(shadowOf({350, 640}).size(), QSize(350, 640).grownBy(WindowShadow::reach));
    }

    void itIsDrawnForEachScale()
    {
        const QImage image = shadowOf({450, 64}, 2);
        QCOMPARE(image.pixelColor(image.rect().center()).alpha(), 0);
        QVERIFY(image.pixelColor(image.width() / 2, image.height() - 2 * WindowShadow::reach.bottom()).alpha() > 60);
    }

    void aWindowSmallerThanItsCornersIsNoTrouble() { QVERIFY(!shadowOf({8, 8}).isNull()); }
};

TUNEDECK_TEST(WindowShadowTest, QApplication)
#include "WindowShadowTest.moc"
