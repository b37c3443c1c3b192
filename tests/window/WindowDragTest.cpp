// SPDX-License-Identifier: MIT
#include "widgets/WindowDrag.h"

#include "support/Desktop.h"
#include "support/TimedStyle.h"
#include "support/registerTest.h"
#include "window/WindowController.h"

#include <QApplication>
#include <QMouseEvent>
#include <QTest>
#include <QWindow>

using namespace tunedeck;

namespace {
void sendMouse(Window &window, QEvent::Type type, QPoint pointer, Qt::MouseButton button, Qt::MouseButtons buttons)
{
    QMouseEvent event(type, window.mapFromGlobal(pointer), pointer, button, buttons, Qt::NoModifier);
    QCoreApplication::sendEvent(&window, &event);
}

/// Drags with the left button from `start` in the window.
void drag(Window &window, QPoint start, QPoint way)
{
    const QPoint from = window.mapToGlobal(start);
    sendMouse(window, QEvent::MouseButtonPress, from, Qt::LeftButton, Qt::LeftButton);
    sendMouse(window, QEvent::MouseMove, from + way / 2, Qt::NoButton, Qt::LeftButton);
    sendMouse(window, QEvent::MouseMove, from + way, Qt::NoButton, Qt::LeftButton);
    sendMouse(window, QEvent::MouseButtonRelease, from + way, Qt::LeftButton, Qt::NoButton);
}
} // namespace

class WindowDragTest : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void initTestCase() { QApplication::setStyle(new TimedStyle); }
    void init() { failOnWarning(); }

    void onlyItsSidesShowTheResizeCursor()
    {
        Desktop desktop;
        WindowController controller(desktop.defaults);
        Window &window = controller.window();
        window.show();
        const auto cursorAt = [&window](QPoint position) {
            QTest::mouseMove(window.windowHandle(), position);
            return window.cursor().shape();
        };
        QCOMPARE(cursorAt({4, 32}), Qt::SizeHorCursor);
        QCOMPARE(cursorAt({5, 32}), Qt::ArrowCursor);
        QCOMPARE(cursorAt({445, 32}), Qt::SizeHorCursor);
        QCOMPARE(cursorAt({444, 32}), Qt::ArrowCursor);
        QCOMPARE(cursorAt({225, 1}), Qt::ArrowCursor);
    }

    /// The offscreen platform has no window manager.
    void whereNoWindowManagerTakesADragOverItFollowsThePointer()
    {
        Desktop desktop;
        WindowController controller(desktop.defaults);
        Window &window = controller.window();
        window.show();
        window.setGeometry(100, 200, 450, 64);
        drag(window, {225, 1}, {60, 40});
        QCOMPARE(window.geometry(), QRect(160, 240, 450, 64));
        QTest::mouseMove(window.windowHandle(), QPoint(10, 1));
        QCOMPARE(window.geometry(), QRect(160, 240, 450, 64));
        drag(window, {447, 32}, {20, 5});
        QCOMPARE(window.geometry(), QRect(160, 240, 470, 64));
        drag(window, {467, 32}, {200, 0});
        QCOMPARE(window.geometry(), QRect(160, 240, 550, 64));
        drag(window, {2, 32}, {90, 0});
        QCOMPARE(window.geometry(), QRect(250, 240, 460, 64));
        drag(window, {2, 32}, {300, 0});
        QCOMPARE(window.geometry(), QRect(360, 240, 350, 64));
    }

    void aPressThatIsNoDragMovesNothing()
    {
        Desktop desktop;
        WindowController controller(desktop.defaults);
        Window &window = controller.window();
        window.show();
        const QRect frame = window.geometry();
        drag(window, {225, 1}, {4, 3});
        QCOMPARE(window.geometry(), frame);
    }

    void aDoubleClickOnTheBackgroundDoesNothing()
    {
        Desktop desktop;
        WindowController controller(desktop.defaults);
        Window &window = controller.window();
        window.show();
        const QRect frame = window.geometry();
        QTest::mouseDClick(window.windowHandle(), Qt::LeftButton, {}, QPoint(225, 32));
        QCOMPARE(window.geometry(), frame);
        QVERIFY(!window.isMaximized());
    }
};

TUNEDECK_TEST(WindowDragTest, QApplication)
#include "WindowDragTest.moc"
