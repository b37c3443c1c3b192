// SPDX-License-Identifier: MIT
#include "PlayerView.h"

#include "SkinDesk.h"

#include <QImage>
#include <QRegularExpression>
#include <QTest>

using namespace tunedeck;

class PlayerViewTest : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void init() { QTest::failOnWarning(QRegularExpression(QStringLiteral(".*"))); }

    void itsCornersAreRoundAndItsInsideIsNot()
    {
        const SkinDesk desk;
        PlayerView view(desk.environment);
        view.resize(450, 64);
        QImage image(view.size(), QImage::Format_ARGB32_Premultiplied);
        image.fill(Qt::transparent);
        view.render(&image, {}, {}, QWidget::DrawChildren);
        for (const QPoint corner : {QPoint(0, 0), QPoint(449, 0), QPoint(0, 63), QPoint(449, 63)}) {
            QVERIFY(image.pixelColor(corner).alpha() < 128);
        }
        QCOMPARE(image.pixelColor(225, 2).alpha(), 255);
        QCOMPARE(image.pixelColor(2, 32).alpha(), 255);
    }
};

QTEST_MAIN(PlayerViewTest)
#include "PlayerViewTest.moc"
