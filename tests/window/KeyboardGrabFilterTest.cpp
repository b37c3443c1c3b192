// SPDX-License-Identifier: MIT
#include "x11/KeyboardGrabFilter.h"

#include "support/failOnWarning.h"
#include "support/registerTest.h"

#include <QApplication>
#include <QTest>
#include <QWidget>

#include <cstdint>

#include <xcb/xcb.h>

using namespace tunedeck;

namespace {
class Control : public QWidget {
public:
    int losses = 0;

protected:
    bool event(QEvent *event) override
    {
        losses += event->type() == QEvent::UngrabKeyboard ? 1 : 0;
        return QWidget::event(event);
    }
};

bool isHidden(KeyboardGrabFilter &filter, std::uint8_t type, std::uint8_t mode)
{
    xcb_focus_out_event_t event{};
    event.response_type = type;
    event.mode = mode;
    return filter.nativeEventFilter("xcb_generic_event_t", &event, nullptr);
}
} // namespace

class KeyboardGrabFilterTest : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void init() { tunedeck::failOnWarning(); }

    void aGrabIsHiddenFromQtButNotFromTheControlThatHasTheKeyboard()
    {
        Control control;
        control.show();
        control.setFocus();
        QVERIFY(QTest::qWaitForWindowActive(&control));
        KeyboardGrabFilter filter;
        QVERIFY(isHidden(filter, XCB_FOCUS_OUT, XCB_NOTIFY_MODE_GRAB));
        QCOMPARE(control.losses, 1);
    }

    void whatIsNoGrabIsLeftToQt()
    {
        Control control;
        control.show();
        control.setFocus();
        QVERIFY(QTest::qWaitForWindowActive(&control));
        KeyboardGrabFilter filter;
        QVERIFY(!isHidden(filter, XCB_FOCUS_OUT, XCB_NOTIFY_MODE_NORMAL));
        QVERIFY(!isHidden(filter, XCB_FOCUS_OUT, XCB_NOTIFY_MODE_UNGRAB));
        QVERIFY(!isHidden(filter, XCB_FOCUS_IN, XCB_NOTIFY_MODE_GRAB));
        QCOMPARE(control.losses, 0);
    }

    void aGrabWhileNoControlHasTheKeyboardIsHiddenToo()
    {
        KeyboardGrabFilter filter;
        QVERIFY(isHidden(filter, XCB_FOCUS_OUT, XCB_NOTIFY_MODE_GRAB));
    }
};

TUNEDECK_TEST(KeyboardGrabFilterTest, QApplication)
#include "KeyboardGrabFilterTest.moc"
