// SPDX-License-Identifier: MIT
#include "window/Window.h"

#include "support/Desktop.h"
#include "support/TimedStyle.h"
#include "support/registerTest.h"
#include "window/WindowController.h"

#include <QApplication>
#include <QImage>
#include <QKeyEvent>
#include <QLineEdit>
#include <QLoggingCategory>
#include <QMenu>
#include <QPushButton>
#include <QScopeGuard>
#include <QSignalSpy>
#include <QTest>
#include <QWindow>

namespace {
int beeps = 0;
}

/// The linker prefers it to the one in Qt's library, which no test can hear.
void QApplication::beep()
{
    ++beeps;
}

using namespace tunedeck;

namespace {
/// Sends a key as a keyboard does: `modifiers` are those that were down before the event.
void sendKey(const Window &window, QEvent::Type type, Qt::Key key, Qt::KeyboardModifiers modifiers)
{
    QKeyEvent event(type, key, modifiers);
    QCoreApplication::sendEvent(window.windowHandle(), &event);
}

class PaintCounter : public QObject {
public:
    /// Shows `window` and counts after its first picture. False if that does not come.
    bool startWith(Window &window)
    {
        window.show();
        const bool isExposed = QTest::qWaitForWindowExposed(&window);
        QCoreApplication::processEvents();
        window.installEventFilter(this);
        return isExposed;
    }
    bool eventFilter(QObject *, QEvent *event) override
    {
        count += event->type() == QEvent::Paint ? 1 : 0;
        return false;
    }
    int count = 0;
};
} // namespace

class WindowTest : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void initTestCase() { QApplication::setStyle(new TimedStyle); }
    void init() { failOnWarning(); }

    void itHasNoFrameAndCanBeKeyAndMain()
    {
        Desktop desktop;
        WindowController controller(desktop.defaults);
        Window &window = controller.window();
        QVERIFY(window.windowFlags().testFlag(Qt::FramelessWindowHint));
        window.show();
        window.activateWindow();
        QVERIFY(QTest::qWaitForWindowActive(&window));
        QCOMPARE(desktop.windowActivation.mainWindow(), window.windowHandle());
    }

    void noControlHasTheKeyboardAtFirst()
    {
        Desktop desktop;
        WindowController controller(desktop.defaults);
        Window &window = controller.window();
        window.setContentView(new QPushButton);
        window.show();
        window.activateWindow();
        QVERIFY(QTest::qWaitForWindowActive(&window));
        QVERIFY(window.hasFocus());
    }

    void anotherScreenAndComingBackRefreshTheShadow()
    {
        Desktop desktop;
        WindowController controller(desktop.defaults);
        Window &window = controller.window();
        PaintCounter paints;
        QVERIFY(paints.startWith(window));
        Q_EMIT window.windowHandle()->screenChanged(QGuiApplication::primaryScreen());
        QTRY_COMPARE(paints.count, 1);
        window.showMinimized();
        QCoreApplication::processEvents();
        paints.count = 0;
        window.showNormal();
        QTRY_VERIFY(paints.count >= 1);
    }

    void itTellsWhetherItCanBeSeen()
    {
        Desktop desktop;
        WindowController controller(desktop.defaults);
        Window &window = controller.window();
        QSignalSpy seen(&window, &Window::canBeSeenChanged);
        window.show();
        QVERIFY(QTest::qWaitForWindowExposed(&window));
        QCOMPARE(seen.count(), 1);
        QCOMPARE(seen.last().first().toBool(), true);
        window.hide();
        QTRY_COMPARE(seen.count(), 2);
        QCOMPARE(seen.last().first().toBool(), false);
        window.show();
        QTRY_COMPARE(seen.count(), 3);
        QCOMPARE(seen.last().first().toBool(), true);
        window.showMinimized();
        QTRY_COMPARE(seen.count(), 4);
        QCOMPARE(seen.last().first().toBool(), false);
    }

    void movingPaintsNothing()
    {
        Desktop desktop;
        WindowController controller(desktop.defaults);
        Window &window = controller.window();
        PaintCounter paints;
        QVERIFY(paints.startWith(window));
        for (int x = 0; x < 20; ++x) {
            window.move(x, 10);
            QCoreApplication::processEvents();
        }
        QCOMPARE(paints.count, 0);
    }

    void escapeIsForTheMenuThatIsOpenAndAsksOnceWhileHeld()
    {
        Desktop desktop;
        WindowController controller(desktop.defaults);
        Window &window = controller.window();
        window.show();
        QVERIFY(QTest::qWaitForWindowExposed(&window));
        controller.setExpanded(true);
        QMenu menu;
        menu.addAction(QStringLiteral("An item"));
        menu.popup(window.mapToGlobal(QPoint(10, 10)));
        QTRY_VERIFY(menu.isVisible());
        sendKey(window, QEvent::KeyPress, Qt::Key_Escape, Qt::NoModifier);
        QVERIFY(controller.isExpanded());
        menu.close();
        QKeyEvent repeated(QEvent::KeyPress, Qt::Key_Escape, Qt::NoModifier, QString(), true);
        QCoreApplication::sendEvent(window.windowHandle(), &repeated);
        QVERIFY(controller.isExpanded());
        sendKey(window, QEvent::KeyPress, Qt::Key_Escape, Qt::NoModifier);
        QVERIFY(!controller.isExpanded());
    }

    void shiftAndOptionAreHeldWhileTheyAreDown()
    {
        Desktop desktop;
        WindowController controller(desktop.defaults);
        Window &window = controller.window();
        window.show();
        QSignalSpy shift(&window, &Window::shiftButtonHeldChanged);
        sendKey(window, QEvent::KeyPress, Qt::Key_Shift, Qt::NoModifier);
        QVERIFY(window.shiftButtonHeld());
        QVERIFY(!window.optionButtonHeld());
        sendKey(window, QEvent::KeyPress, Qt::Key_Alt, Qt::ShiftModifier);
        QVERIFY(window.optionButtonHeld());
        sendKey(window, QEvent::KeyRelease, Qt::Key_Shift, Qt::ShiftModifier | Qt::AltModifier);
        QVERIFY(!window.shiftButtonHeld());
        QVERIFY(window.optionButtonHeld());
        sendKey(window, QEvent::KeyRelease, Qt::Key_Alt, Qt::AltModifier);
        QVERIFY(!window.optionButtonHeld());
        QCOMPARE(shift.count(), 4);
    }

    void theFlagsAreHeardWhateverChildHasTheKeyboard()
    {
        Desktop desktop;
        WindowController controller(desktop.defaults);
        Window &window = controller.window();
        auto *field = new QLineEdit;
        window.setContentView(field);
        window.show();
        field->setFocus();
        window.activateWindow();
        QVERIFY(QTest::qWaitForWindowActive(&window));
        sendKey(window, QEvent::KeyPress, Qt::Key_Shift, Qt::NoModifier);
        QVERIFY(window.shiftButtonHeld());
    }

    void theFlagsAreClearedWhenAnotherWindowGetsTheKeyboard()
    {
        Desktop desktop;
        WindowController controller(desktop.defaults);
        Window &window = controller.window();
        window.show();
        window.activateWindow();
        QVERIFY(QTest::qWaitForWindowActive(&window));
        window.flagsChanged(Qt::ShiftModifier | Qt::AltModifier);
        QWidget other;
        other.show();
        other.activateWindow();
        QVERIFY(QTest::qWaitForWindowActive(&other));
        QVERIFY(!window.shiftButtonHeld());
        QVERIFY(!window.optionButtonHeld());
    }

    void thePointerShowsWhichKeysWereReleasedWhileTheWindowManagerHadThem()
    {
        Desktop desktop;
        WindowController controller(desktop.defaults);
        Window &window = controller.window();
        window.show();
        QVERIFY(QTest::qWaitForWindowExposed(&window));
        window.flagsChanged(Qt::ShiftModifier | Qt::AltModifier);
        QSignalSpy shift(&window, &Window::shiftButtonHeldChanged);
        const QPointF place(100, 30);
        for (int move = 0; move < 2; ++move) {
            QMouseEvent moved(
                QEvent::MouseMove, place, window.mapToGlobal(place), Qt::NoButton, Qt::NoButton, Qt::AltModifier);
            QCoreApplication::sendEvent(window.windowHandle(), &moved);
            QVERIFY(!window.shiftButtonHeld());
            QVERIFY(window.optionButtonHeld());
            QCOMPARE(shift.count(), 1);
        }
    }

    void escapeAndControlPeriodPutTheDrawerAway()
    {
        Desktop desktop;
        WindowController controller(desktop.defaults);
        Window &window = controller.window();
        auto *field = new QLineEdit;
        window.setContentView(field);
        window.show();
        field->setFocus();
        controller.setExpanded(true);
        QTest::keyClick(window.windowHandle(), Qt::Key_Escape);
        QVERIFY(!controller.isExpanded());
        QCOMPARE(window.height(), 64);
        controller.setExpanded(true);
        QTest::keyClick(window.windowHandle(), Qt::Key_Period, Qt::ControlModifier);
        QVERIFY(!controller.isExpanded());
    }

    void escapeChangesNothingInACollapsedWindow()
    {
        Desktop desktop;
        WindowController controller(desktop.defaults);
        controller.window().show();
        const QRect frame = controller.window().geometry();
        QTest::keyClick(controller.window().windowHandle(), Qt::Key_Escape);
        QVERIFY(!controller.isExpanded());
        QVERIFY(controller.window().isVisible());
        QCOMPARE(controller.window().geometry(), frame);
    }

    void escapeBeepsWhereThereIsNoDrawerToPutAway()
    {
        Desktop desktop;
        WindowController controller(desktop.defaults);
        QWindow *window = controller.window().windowHandle();
        controller.window().show();
        beeps = 0;
        controller.setExpanded(true);
        QTest::keyClick(window, Qt::Key_Escape);
        QCOMPARE(beeps, 0);
        QTest::keyClick(window, Qt::Key_Escape);
        QCOMPARE(beeps, 1);
        QTest::keyClick(window, Qt::Key_Period, Qt::ControlModifier);
        QCOMPARE(beeps, 2);
    }

    void theLevelIsTheNativeWindowsAndDoesNotHideIt()
    {
        Desktop desktop;
        WindowController controller(desktop.defaults);
        Window &window = controller.window();
        const auto isOnTop = [&window] { return window.windowHandle()->flags().testFlag(Qt::WindowStaysOnTopHint); };
        window.show();
        QSignalSpy visible(window.windowHandle(), &QWindow::visibleChanged);
        window.setLevel(WindowLevel::Floating);
        QVERIFY(isOnTop());
        QVERIFY(window.isVisible());
        window.hide();
        window.show();
        QVERIFY(isOnTop());
        window.setLevel(WindowLevel::Normal);
        QVERIFY(!isOnTop());
        QCOMPARE(visible.count(), 2);
    }

    void theLogNamesTheLevelThatTheWindowGets()
    {
        QLoggingCategory::setFilterRules(QStringLiteral("tunedeck.window=true"));
        const auto off = qScopeGuard([] { QLoggingCategory::setFilterRules(QString()); });
        Desktop desktop;
        WindowController controller(desktop.defaults);
        QTest::ignoreMessage(QtDebugMsg, "level floating");
        controller.window().setLevel(WindowLevel::Floating);
        QTest::ignoreMessage(QtDebugMsg, "level normal");
        controller.window().setLevel(WindowLevel::Normal);
    }

    void zoomGoesToTheGreatestWidthAndBack()
    {
        Desktop desktop;
        WindowController controller(desktop.defaults);
        Window &window = controller.window();
        window.resize(401, 64);
        window.zoom();
        QCOMPARE(window.size(), QSize(550, 64));
        window.zoom();
        QCOMPARE(window.size(), QSize(401, 64));
    }

    void itDoesNotFillTheScreen()
    {
        Desktop desktop;
        WindowController controller(desktop.defaults);
        Window &window = controller.window();
        window.show();
        window.setGeometry(100, 200, 450, 64);
        for (const Qt::WindowState state : {Qt::WindowMaximized, Qt::WindowFullScreen}) {
            window.setWindowState(state);
            QCOMPARE(window.windowState(), Qt::WindowNoState);
            QCOMPARE(window.geometry(), QRect(100, 200, 450, 64));
        }
    }
};

TUNEDECK_TEST(WindowTest, QApplication)
#include "WindowTest.moc"
