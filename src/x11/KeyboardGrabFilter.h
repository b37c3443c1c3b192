// SPDX-License-Identifier: MIT
#pragma once

#include <QAbstractNativeEventFilter>

namespace tunedeck {

/// Hides from Qt that another X11 program grabs the keyboard. Window managers do that for as long as the user moves or
/// resizes a window, and Qt would take it for the loss of the keyboard focus: the window would look inactive. A real
/// loss of the focus during a grab is reported by an event of its own.
///
/// The control that has the keyboard focus gets QEvent::UngrabKeyboard instead: the release of a key that is down now
/// goes to the other program.
///
/// Qt's application must exist before the filter and outlive it. The filter does nothing on any other window system.
class KeyboardGrabFilter : public QAbstractNativeEventFilter {
public:
    KeyboardGrabFilter();
    ~KeyboardGrabFilter() override;

    bool nativeEventFilter(const QByteArray &eventType, void *message, qintptr *result) override;

private:
    Q_DISABLE_COPY_MOVE(KeyboardGrabFilter)
};

} // namespace tunedeck
