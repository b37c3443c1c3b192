// SPDX-License-Identifier: MIT
#include "skin/views/SkinnedButton.h"
#include "support/MenuWindow.h"
#include "support/failOnWarning.h"
#include "support/registerTest.h"

#include <QAction>
#include <QApplication>
#include <QMouseEvent>
#include <QSignalSpy>
#include <QTest>

using namespace tunedeck;

namespace {
class PlainButton : public SkinnedButton {
public:
    using SkinnedButton::SkinnedButton;

protected:
    void paintEvent(QPaintEvent *) override { }
};

class ListeningWindow : public QWidget {
public:
    int presses = 0;
    int moves = 0;

protected:
    void mousePressEvent(QMouseEvent *) override { ++presses; }
    void mouseMoveEvent(QMouseEvent *) override { ++moves; }
};
} // namespace

class SkinnedButtonTest : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void init() { tunedeck::failOnWarning(); }

    void aClickDoesNotTakeTheKeyboard()
    {
        QWidget window;
        window.setFocusPolicy(Qt::ClickFocus);
        PlainButton button(&window);
        window.show();
        window.setFocus();
        QVERIFY(QTest::qWaitForWindowActive(&window));
        QSignalSpy clicked(&button, &PlainButton::clicked);
        QTest::mouseClick(&button, Qt::LeftButton);
        QCOMPARE(clicked.count(), 1);
        QVERIFY(!button.hasFocus());
    }

    void tabReachesIt()
    {
        QWidget window;
        PlainButton first(&window);
        PlainButton second(&window);
        window.show();
        first.setFocus();
        QVERIFY(QTest::qWaitForWindowActive(&window));
        QTest::keyClick(window.windowHandle(), Qt::Key_Tab);
        QVERIFY(second.hasFocus());
    }

    void spacePressesTheButtonThatHasTheKeyboardThoughItIsAShortcutToo()
    {
        QWidget window;
        PlainButton button(&window);
        QAction shortcut;
        shortcut.setShortcut(Qt::Key_Space);
        window.addAction(&shortcut);
        window.show();
        button.setFocus();
        QVERIFY(QTest::qWaitForWindowActive(&window));
        QSignalSpy clicked(&button, &PlainButton::clicked);
        QSignalSpy triggered(&shortcut, &QAction::triggered);
        QTest::keyClick(window.windowHandle(), Qt::Key_Space);
        QCOMPARE(clicked.count(), 1);
        QCOMPARE(triggered.count(), 0);
    }

    void whoMovesWhilePressingItDoesNotMoveTheWindow()
    {
        ListeningWindow window;
        PlainButton button(&window);
        button.setGeometry(10, 10, 20, 20);
        window.show();
        QVERIFY(QTest::qWaitForWindowExposed(&window));
        QMouseEvent moved(
            QEvent::MouseMove, QPointF(40, 10), QPointF(40, 10), Qt::NoButton, Qt::LeftButton, Qt::NoModifier);
        QCoreApplication::sendEvent(&button, &moved);
        QVERIFY(moved.isAccepted());
        QCOMPARE(window.moves, 0);
    }

    void aButtonThatIsReleasedOnAMenuComesUpWithoutAClick()
    {
        auto *button = new PlainButton;
        MenuWindow window(*button);
        QVERIFY(QTest::qWaitForWindowExposed(&window));
        QSignalSpy clicked(button, &PlainButton::clicked);
        window.press(Qt::LeftButton);
        window.press(Qt::RightButton);
        QVERIFY(window.isMenuOpen());
        QVERIFY(button->isDown());
        window.release(Qt::LeftButton);
        QVERIFY(!button->isDown());
        QCOMPARE(clicked.count(), 0);
    }

    void aDisabledButtonKeepsTheMouseFromTheWindow()
    {
        ListeningWindow window;
        PlainButton button(&window);
        button.setGeometry(10, 10, 20, 20);
        window.show();
        QVERIFY(QTest::qWaitForWindowExposed(&window));
        QTest::mouseClick(window.windowHandle(), Qt::LeftButton, {}, QPoint(5, 5));
        QCOMPARE(window.presses, 1);
        button.setEnabled(false);
        QTest::mouseClick(window.windowHandle(), Qt::LeftButton, {}, QPoint(15, 15));
        QCOMPARE(window.presses, 1);
    }
};

TUNEDECK_TEST(SkinnedButtonTest, QApplication)
#include "SkinnedButtonTest.moc"
