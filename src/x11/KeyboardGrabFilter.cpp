// SPDX-License-Identifier: MIT
#include "x11/KeyboardGrabFilter.h"

#include <QEvent>
#include <QGuiApplication>

#include <xcb/xcb.h>

namespace tunedeck {

namespace {
/// The X server marks events that another program has sent by this bit of their type.
constexpr std::uint8_t sentBit = 0x80;
} // namespace

KeyboardGrabFilter::KeyboardGrabFilter()
{
    qApp->installNativeEventFilter(this);
}

KeyboardGrabFilter::~KeyboardGrabFilter()
{
    qApp->removeNativeEventFilter(this);
}

bool KeyboardGrabFilter::nativeEventFilter(const QByteArray &eventType, void *message, qintptr *)
{
    if (eventType != "xcb_generic_event_t") {
        return false;
    }
    const auto *event = static_cast<const xcb_focus_out_event_t *>(message);
    const bool isGrab = (event->response_type & ~sentBit) == XCB_FOCUS_OUT && event->mode == XCB_NOTIFY_MODE_GRAB;
    if (QObject *control = QGuiApplication::focusObject(); isGrab && control) {
        QEvent ungrab(QEvent::UngrabKeyboard);
        QCoreApplication::sendEvent(control, &ungrab);
    }
    return isGrab;
}

} // namespace tunedeck
