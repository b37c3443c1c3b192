// SPDX-License-Identifier: MIT
#include "drawer/PlaylistWindowController.h"
#include "support/registerTest.h"

#include <QApplication>
#include <QRegularExpression>
#include <QTest>

using namespace tunedeck;

class PlaylistWindowControllerTest : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void init() { QTest::failOnWarning(QRegularExpression(QStringLiteral(".*"))); }

    void theWindowIsNotShownByItself()
    {
        PlaylistWindowController controller;
        QVERIFY(!controller.window().isVisible());
    }

    void theBackgroundIsAsGoodAsClearButNotQuite()
    {
        PlaylistWindowController controller;
        const QColor background = controller.window().palette().color(QPalette::Window);
        QVERIFY(background.alphaF() > 0);
        QVERIFY(background.alphaF() < 0.001);
        QVERIFY(controller.window().autoFillBackground());
    }

    void whatTheWindowHoldsMayReachItsCorners()
    {
        PlaylistWindowController controller;
        PlaylistWindow &window = controller.window();
        window.resize(100, 50);
        auto *content = new QWidget(&window);
        content->setAutoFillBackground(true);
        content->setPalette(QPalette(Qt::red));
        content->setGeometry(window.rect());
        const QImage picture = window.grab().toImage();
        for (const QPoint corner : {QPoint(0, 0), QPoint(99, 0), QPoint(0, 49), QPoint(99, 49)}) {
            QCOMPARE(picture.pixelColor(corner), QColor(Qt::red));
        }
        QVERIFY(window.mask().isEmpty());
    }
};

TUNEDECK_TEST(PlaylistWindowControllerTest, QApplication)
#include "PlaylistWindowControllerTest.moc"
