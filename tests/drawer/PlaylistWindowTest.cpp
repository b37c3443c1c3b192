// SPDX-License-Identifier: MIT
#include "drawer/PlaylistWindow.h"
#include "support/registerTest.h"

#include <QApplication>
#include <QGuiApplication>
#include <QPaintEvent>
#include <QRegularExpression>
#include <QTest>
#include <QWindow>

using namespace tunedeck;

namespace {
class PaintCounter : public QObject {
public:
    int count = 0;

    bool eventFilter(QObject *, QEvent *event) override
    {
        count += event->type() == QEvent::Paint ? 1 : 0;
        return false;
    }
};
} // namespace

class PlaylistWindowTest : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void init() { QTest::failOnWarning(QRegularExpression(QStringLiteral(".*"))); }

    void itHasNoFrameAndCanBeKey()
    {
        PlaylistWindow window;
        QVERIFY(window.windowFlags().testFlag(Qt::FramelessWindowHint));
        window.show();
        window.activateWindow();
        QVERIFY(QTest::qWaitForWindowActive(&window));
    }

    void anotherScreenRefreshesTheShadow()
    {
        PlaylistWindow window;
        window.show();
        QVERIFY(QTest::qWaitForWindowExposed(&window));
        QCoreApplication::processEvents();
        PaintCounter paints;
        window.installEventFilter(&paints);
        Q_EMIT window.windowHandle()->screenChanged(QGuiApplication::primaryScreen());
        QTRY_COMPARE(paints.count, 1);
    }

    /// The window manager does it where there is one; on the offscreen platform there is none.
    void itsBackgroundMovesIt()
    {
        PlaylistWindow window;
        window.setGeometry(100, 200, 300, 64);
        window.show();
        QVERIFY(QTest::qWaitForWindowExposed(&window));
        QTest::mousePress(window.windowHandle(), Qt::LeftButton, {}, QPoint(150, 30));
        QTest::mouseMove(window.windowHandle(), QPoint(153, 30));
        QCOMPARE(window.geometry(), QRect(100, 200, 300, 64));
        QTest::mouseMove(window.windowHandle(), QPoint(190, 50));
        QCOMPARE(window.geometry(), QRect(140, 220, 300, 64));
        QTest::mouseMove(window.windowHandle(), QPoint(140, 30));
        QCOMPARE(window.geometry(), QRect(130, 220, 300, 64));
        QTest::mouseRelease(window.windowHandle(), Qt::LeftButton, {}, QPoint(150, 30));
        QTest::mouseMove(window.windowHandle(), QPoint(200, 40));
        QCOMPARE(window.geometry(), QRect(130, 220, 300, 64));
    }

    void aDragOfItsEdgeMovesItToo()
    {
        PlaylistWindow window;
        window.setGeometry(100, 200, 300, 64);
        window.show();
        QTest::mousePress(window.windowHandle(), Qt::LeftButton, {}, QPoint(1, 30));
        QTest::mouseMove(window.windowHandle(), QPoint(41, 50));
        QTest::mouseRelease(window.windowHandle(), Qt::LeftButton, {}, QPoint(1, 30));
        QCOMPARE(window.geometry(), QRect(140, 220, 300, 64));
    }

    void anotherButtonMovesNothing()
    {
        PlaylistWindow window;
        window.setGeometry(100, 200, 300, 64);
        window.show();
        QTest::mousePress(window.windowHandle(), Qt::RightButton, {}, QPoint(150, 30));
        QTest::mouseMove(window.windowHandle(), QPoint(190, 50));
        QTest::mouseRelease(window.windowHandle(), Qt::RightButton, {}, QPoint(190, 50));
        QCOMPARE(window.geometry(), QRect(100, 200, 300, 64));
    }
};

TUNEDECK_TEST(PlaylistWindowTest, QApplication)
#include "PlaylistWindowTest.moc"
