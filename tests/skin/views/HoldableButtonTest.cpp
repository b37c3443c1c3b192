// SPDX-License-Identifier: MIT
#include "skin/views/HoldableButton.h"

#include "support/MenuWindow.h"
#include "support/elapse.h"
#include "support/failOnWarning.h"
#include "support/registerTest.h"

#include <QAccessible>
#include <QApplication>
#include <QElapsedTimer>
#include <QFocusEvent>
#include <QKeyEvent>
#include <QPointer>
#include <QSignalSpy>
#include <QTest>

#include <chrono>

using namespace tunedeck;

namespace {
constexpr QPoint inside(10, 10);
constexpr QPoint outside(60, 10);

class PlainButton : public HoldableButton {
public:
    PlainButton() { resize(25, 25); }

    [[nodiscard]] QTimer &timer() const { return *findChild<QTimer *>(); }
    void press() { QTest::mousePress(this, Qt::LeftButton, {}, inside); }
    void release(QPoint position = inside) { QTest::mouseRelease(this, Qt::LeftButton, {}, position); }
    bool hold()
    {
        press();
        return elapse(timer());
    }

protected:
    void paintEvent(QPaintEvent *) override { }
};

class HoldButton : public PlainButton {
public:
    HoldButton() { setHoldButton(true); }
};

/// A report of a key that is held down, as X11 and Wayland send it.
void repeatKey(QWidget &widget, Qt::Key key)
{
    for (const QEvent::Type type : {QEvent::KeyRelease, QEvent::KeyPress}) {
        QKeyEvent event(type, key, Qt::NoModifier, QStringLiteral(" "), true);
        QCoreApplication::sendEvent(&widget, &event);
    }
}

bool holdWithKeyboard(PlainButton &button)
{
    QTest::keyPress(&button, Qt::Key_Space);
    return elapse(button.timer());
}

bool isAtRest(const PlainButton &button)
{
    return !button.isHeld() && !button.isIntentionallyHeld() && !button.isDown() && !button.timer().isActive();
}
} // namespace

class HoldableButtonTest : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void init() { tunedeck::failOnWarning(); }

    void aNewButtonIsNeitherHeldNorAHoldButton()
    {
        const PlainButton button;
        QVERIFY(!button.isHoldButton());
        QVERIFY(!button.isHeld());
        QVERIFY(!button.isIntentionallyHeld());
        QVERIFY(!button.timer().isActive());
    }

    void aPlainButtonClicksAndTellsThatItIsHeld()
    {
        PlainButton button;
        QSignalSpy clicked(&button, &PlainButton::clicked);
        QSignalSpy held(&button, &PlainButton::isHeldChanged);
        button.press();
        QVERIFY(button.isHeld());
        QVERIFY(button.isDown());
        QVERIFY(!button.timer().isActive());
        button.release();
        QVERIFY(!button.isHeld());
        QCOMPARE(clicked.count(), 1);
        QCOMPARE(held.count(), 2);
    }

    void aShortPressIsOneClickAndTellsThatNothingIsHeld()
    {
        HoldButton button;
        QSignalSpy clicked(&button, &PlainButton::clicked);
        QSignalSpy intentionallyHeld(&button, &PlainButton::isIntentionallyHeldChanged);
        button.press();
        QVERIFY(button.isHeld());
        QVERIFY(button.isDown());
        QCOMPARE(clicked.count(), 0);
        button.release();
        QCOMPARE(clicked.count(), 1);
        QCOMPARE(intentionallyHeld.count(), 1);
        QCOMPARE(intentionallyHeld.first().first().toBool(), false);
        QVERIFY(!button.isHeld());
        QVERIFY(!button.isDown());
        QVERIFY(!button.timer().isActive());
    }

    void theClickIsToldBeforeTheEndOfThePress()
    {
        HoldButton button;
        m_told.clear();
        connect(&button, &PlainButton::clicked, this, [this] { m_told.append(QStringLiteral("click")); });
        connect(
            &button, &PlainButton::isIntentionallyHeldChanged, this, [this] { m_told.append(QStringLiteral("end")); });
        button.press();
        button.release();
        QCOMPARE(m_told, (QStringList{QStringLiteral("click"), QStringLiteral("end")}));
    }

    void aHoldBeginsAtTheThresholdEndsWithTheReleaseAndIsNoClick()
    {
        HoldButton button;
        QSignalSpy clicked(&button, &PlainButton::clicked);
        QSignalSpy intentionallyHeld(&button, &PlainButton::isIntentionallyHeldChanged);
        QVERIFY(button.hold());
        QVERIFY(button.isIntentionallyHeld());
        QVERIFY(button.isDown());
        button.release();
        QVERIFY(!button.isIntentionallyHeld());
        QVERIFY(!button.isDown());
        QCOMPARE(clicked.count(), 0);
        QCOMPARE(intentionallyHeld.count(), 2);
        QCOMPARE(intentionallyHeld.at(0).first().toBool(), true);
        QCOMPARE(intentionallyHeld.at(1).first().toBool(), false);
    }

    void theThresholdIsSixTenthsOfASecond()
    {
        HoldButton button;
        QSignalSpy intentionallyHeld(&button, &PlainButton::isIntentionallyHeldChanged);
        QElapsedTimer sincePress;
        button.press();
        sincePress.start();
        QVERIFY(intentionallyHeld.wait(900));
        QVERIFY2(sincePress.elapsed() >= 595, qPrintable(QString::number(sincePress.elapsed())));
        button.release();
    }

    void aReleaseOutsideEndsTheHold()
    {
        HoldButton button;
        QVERIFY(button.hold());
        button.release(outside);
        QVERIFY(!button.isIntentionallyHeld());
        QVERIFY(!button.isHeld());
        QVERIFY(!button.isDown());
    }

    void aShortPressThatIsReleasedOutsideIsNoClick()
    {
        HoldButton button;
        QSignalSpy clicked(&button, &PlainButton::clicked);
        button.press();
        button.release(outside);
        QCOMPARE(clicked.count(), 0);
        QVERIFY(!button.isDown());
        QVERIFY(!button.timer().isActive());
    }

    void anotherPressBeginsTheThresholdAnew()
    {
        HoldButton button;
        button.press();
        button.release();
        button.press();
        QVERIFY(button.timer().isActive());
        QVERIFY(!button.isIntentionallyHeld());
        button.release();
    }

    void theSecondPressOfADoubleClickIsAPressToo()
    {
        HoldButton button;
        QSignalSpy clicked(&button, &PlainButton::clicked);
        QTest::mouseClick(&button, Qt::LeftButton, {}, inside);
        QTest::mouseDClick(&button, Qt::LeftButton, {}, inside);
        QVERIFY(button.isHeld());
        button.release();
        QCOMPARE(clicked.count(), 2);
        QVERIFY(!button.isHeld());
    }

    void otherMouseButtonsDoNothing()
    {
        HoldButton button;
        QSignalSpy held(&button, &PlainButton::isHeldChanged);
        QTest::mouseClick(&button, Qt::RightButton, {}, inside);
        QTest::mouseClick(&button, Qt::MiddleButton, {}, inside);
        QCOMPARE(held.count(), 0);
        button.press();
        QTest::mouseClick(&button, Qt::RightButton, {}, inside);
        QVERIFY(button.isHeld());
        QVERIFY(button.timer().isActive());
        button.release();
    }

    void aDisabledButtonIgnoresTheMouse()
    {
        HoldButton button;
        button.setEnabled(false);
        QSignalSpy held(&button, &PlainButton::isHeldChanged);
        QSignalSpy clicked(&button, &PlainButton::clicked);
        QSignalSpy intentionallyHeld(&button, &PlainButton::isIntentionallyHeldChanged);
        button.press();
        QVERIFY(!button.isHeld());
        QVERIFY(!button.timer().isActive());
        button.release();
        QCOMPARE(held.count(), 0);
        QCOMPARE(clicked.count(), 0);
        QCOMPARE(intentionallyHeld.count(), 0);
    }

    void aButtonThatIsDisabledWhileHeldLetsGo()
    {
        HoldButton button;
        QVERIFY(button.hold());
        button.setEnabled(false);
        QVERIFY(!button.isIntentionallyHeld());
        QVERIFY(!button.isHeld());
        QVERIFY(!button.isDown());
        QSignalSpy intentionallyHeld(&button, &PlainButton::isIntentionallyHeldChanged);
        button.release();
        QCOMPARE(intentionallyHeld.count(), 0);
    }

    void aButtonThatIsHiddenBeforeTheThresholdIsNeverHeld()
    {
        HoldButton button;
        button.show();
        button.press();
        button.hide();
        QVERIFY(!button.timer().isActive());
        QVERIFY(!button.isHeld());
    }

    void aHoldEndsThoughAMenuGetsTheRelease()
    {
        auto *button = new HoldButton;
        MenuWindow window(*button);
        QVERIFY(QTest::qWaitForWindowExposed(&window));
        QSignalSpy intentionallyHeld(button, &PlainButton::isIntentionallyHeldChanged);
        window.press(Qt::LeftButton);
        QVERIFY(elapse(button->timer()));
        QVERIFY(button->isIntentionallyHeld());
        window.press(Qt::RightButton);
        QVERIFY(window.isMenuOpen());
        QVERIFY(button->isIntentionallyHeld());
        window.release(Qt::LeftButton);
        QVERIFY(!button->isIntentionallyHeld());
        QVERIFY(!button->isHeld());
        QVERIFY(!button->isDown());
        QCOMPARE(intentionallyHeld.count(), 2);
    }

    void aPressThatIsReleasedOnAMenuIsNeitherAClickNorAHold()
    {
        auto *button = new HoldButton;
        MenuWindow window(*button);
        QVERIFY(QTest::qWaitForWindowExposed(&window));
        QSignalSpy clicked(button, &PlainButton::clicked);
        window.press(Qt::LeftButton);
        window.press(Qt::RightButton);
        window.release(Qt::LeftButton);
        QVERIFY(!button->timer().isActive());
        QVERIFY(!button->isHeld());
        QVERIFY(!button->isDown());
        window.release(Qt::RightButton);
        window.closeMenu();
        QCOMPARE(clicked.count(), 0);
    }

    void theKeyboardClicksAHoldButton()
    {
        HoldButton button;
        QSignalSpy clicked(&button, &PlainButton::clicked);
        QTest::keyClick(&button, Qt::Key_Space);
        QCOMPARE(clicked.count(), 1);
    }

    void theKeyboardHoldsItToo()
    {
        HoldButton button;
        QSignalSpy clicked(&button, &PlainButton::clicked);
        QSignalSpy intentionallyHeld(&button, &PlainButton::isIntentionallyHeldChanged);
        QVERIFY(holdWithKeyboard(button));
        QVERIFY(button.isHeld());
        QVERIFY(button.isIntentionallyHeld());
        QVERIFY(button.isDown());
        QTest::keyRelease(&button, Qt::Key_Space);
        QVERIFY(isAtRest(button));
        QCOMPARE(clicked.count(), 0);
        QCOMPARE(intentionallyHeld.count(), 2);
        QCOMPARE(intentionallyHeld.at(0).first().toBool(), true);
        QCOMPARE(intentionallyHeld.at(1).first().toBool(), false);
    }

    void aShortPressOfTheKeyIsOneClickAndTellsThatNothingIsHeld()
    {
        HoldButton button;
        QSignalSpy clicked(&button, &PlainButton::clicked);
        QSignalSpy intentionallyHeld(&button, &PlainButton::isIntentionallyHeldChanged);
        QTest::keyPress(&button, Qt::Key_Space);
        QVERIFY(button.isHeld());
        QCOMPARE(clicked.count(), 0);
        QTest::keyRelease(&button, Qt::Key_Space);
        QCOMPARE(clicked.count(), 1);
        QCOMPARE(intentionallyHeld.count(), 1);
        QCOMPARE(intentionallyHeld.first().first().toBool(), false);
        QVERIFY(isAtRest(button));
    }

    void aKeyThatRepeatsIsHeldOnceAndNeverClicks()
    {
        HoldButton button;
        QSignalSpy clicked(&button, &PlainButton::clicked);
        QSignalSpy intentionallyHeld(&button, &PlainButton::isIntentionallyHeldChanged);
        QTest::keyPress(&button, Qt::Key_Space);
        const int timer = button.timer().timerId();
        repeatKey(button, Qt::Key_Space);
        QCOMPARE(button.timer().timerId(), timer);
        QVERIFY(elapse(button.timer()));
        repeatKey(button, Qt::Key_Space);
        QVERIFY(button.isIntentionallyHeld());
        QCOMPARE(intentionallyHeld.count(), 1);
        QTest::keyRelease(&button, Qt::Key_Space);
        QVERIFY(isAtRest(button));
        QCOMPARE(clicked.count(), 0);
    }

    void aKeyThatPressesNoButtonHoldsNone()
    {
        HoldButton button;
        QTest::keyPress(&button, Qt::Key_A);
        QVERIFY(isAtRest(button));
        QVERIFY(holdWithKeyboard(button));
        QTest::keyClick(&button, Qt::Key_A);
        QVERIFY(button.isIntentionallyHeld());
    }

    void aPlainButtonIsNotHeldByTheKeyboard()
    {
        PlainButton button;
        QSignalSpy clicked(&button, &PlainButton::clicked);
        QTest::keyPress(&button, Qt::Key_Space);
        QVERIFY(!button.timer().isActive());
        QTest::keyRelease(&button, Qt::Key_Space);
        QCOMPARE(clicked.count(), 1);
        QVERIFY(isAtRest(button));
    }

    void theKeyboardsHoldEndsWithoutTheRelease_data()
    {
        QTest::addColumn<Qt::FocusReason>("reason");
        QTest::newRow("Tab") << Qt::TabFocusReason;
        QTest::newRow("another window") << Qt::ActiveWindowFocusReason;
        QTest::newRow("a menu") << Qt::PopupFocusReason;
    }

    void theKeyboardsHoldEndsWithoutTheRelease()
    {
        QFETCH(const Qt::FocusReason, reason);
        HoldButton button;
        QSignalSpy clicked(&button, &PlainButton::clicked);
        QSignalSpy intentionallyHeld(&button, &PlainButton::isIntentionallyHeldChanged);
        QVERIFY(holdWithKeyboard(button));
        QFocusEvent leave(QEvent::FocusOut, reason);
        QCoreApplication::sendEvent(&button, &leave);
        QVERIFY(isAtRest(button));
        QCOMPARE(intentionallyHeld.count(), 2);
        QTest::keyRelease(&button, Qt::Key_Space);
        QCOMPARE(intentionallyHeld.count(), 2);
        QCOMPARE(clicked.count(), 0);
    }

    void theKeyboardsHoldEndsWhereAnotherProgramGrabsTheKeyboard()
    {
        HoldButton button;
        QVERIFY(holdWithKeyboard(button));
        QEvent grabbed(QEvent::UngrabKeyboard);
        QCoreApplication::sendEvent(&button, &grabbed);
        QVERIFY(isAtRest(button));
        QVERIFY(button.hold());
        QCoreApplication::sendEvent(&button, &grabbed);
        QVERIFY(button.isIntentionallyHeld());
        button.release();
    }

    void aKeyThatIsReleasedElsewhereBeforeTheThresholdIsNeitherAClickNorAHold()
    {
        HoldButton button;
        QSignalSpy clicked(&button, &PlainButton::clicked);
        QTest::keyPress(&button, Qt::Key_Space);
        QFocusEvent leave(QEvent::FocusOut, Qt::PopupFocusReason);
        QCoreApplication::sendEvent(&button, &leave);
        QVERIFY(isAtRest(button));
        QTest::keyRelease(&button, Qt::Key_Space);
        QCOMPARE(clicked.count(), 0);
    }

    void aButtonThatIsDisabledOrHiddenWhileTheKeyHoldsItLetsGo()
    {
        HoldButton disabled;
        QVERIFY(holdWithKeyboard(disabled));
        disabled.setEnabled(false);
        QVERIFY(isAtRest(disabled));
        HoldButton hidden;
        hidden.show();
        QVERIFY(holdWithKeyboard(hidden));
        hidden.hide();
        QVERIFY(isAtRest(hidden));
    }

    void aKeyAndAMouseDoNotHoldItTogether()
    {
        HoldButton button;
        QSignalSpy clicked(&button, &PlainButton::clicked);
        QVERIFY(holdWithKeyboard(button));
        QTest::mouseClick(&button, Qt::LeftButton, {}, inside);
        QVERIFY(button.isIntentionallyHeld());
        QTest::keyRelease(&button, Qt::Key_Space);
        QVERIFY(isAtRest(button));
        QVERIFY(button.hold());
        QTest::keyClick(&button, Qt::Key_Space);
        QVERIFY(button.isIntentionallyHeld());
        QVERIFY(button.isDown());
        button.release();
        QVERIFY(isAtRest(button));
        QCOMPARE(clicked.count(), 0);
    }

    void theMousesHoldOutlastsTheLossOfTheKeyboard()
    {
        HoldButton button;
        QVERIFY(button.hold());
        QFocusEvent leave(QEvent::FocusOut, Qt::PopupFocusReason);
        QCoreApplication::sendEvent(&button, &leave);
        QVERIFY(button.isIntentionallyHeld());
        button.release();
        QVERIFY(isAtRest(button));
    }

    void aScreenReadersPressIsAClick()
    {
        HoldButton button;
        QSignalSpy clicked(&button, &PlainButton::clicked);
        QSignalSpy intentionallyHeld(&button, &PlainButton::isIntentionallyHeldChanged);
        QAccessibleInterface &accessible = *QAccessible::queryAccessibleInterface(&button);
        accessible.actionInterface()->doAction(QAccessibleActionInterface::pressAction());
        QTRY_COMPARE(clicked.count(), 1);
        QCOMPARE(intentionallyHeld.count(), 0);
        QVERIFY(isAtRest(button));
    }

    void aClickOfTheKeyMayDeleteTheButton()
    {
        auto *button = new HoldButton;
        connect(button, &PlainButton::clicked, button, [button] { delete button; });
        const QPointer<HoldButton> watched(button);
        QTest::keyClick(button, Qt::Key_Space);
        QVERIFY(!watched);
    }

    void aClickMayDeleteTheButton()
    {
        auto *button = new HoldButton;
        connect(button, &PlainButton::clicked, button, [button] { delete button; });
        const QPointer<HoldButton> watched(button);
        button->press();
        button->release();
        QVERIFY(!watched);
    }

private:
    QStringList m_told;
};

TUNEDECK_TEST(HoldableButtonTest, QApplication)
#include "HoldableButtonTest.moc"
