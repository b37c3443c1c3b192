// SPDX-License-Identifier: MIT
#include "skin/looks/ActivationFlag.h"

#include "platform/WindowActivation.h"

#include <QWindow>

namespace tunedeck {

ActivationFlag::ActivationFlag(const WindowActivation &activation, Status status)
{
    if (status == Status::Main) {
        connect(&activation, &WindowActivation::windowDidBecomeMain, this, [this] { set(true); });
        connect(&activation, &WindowActivation::windowDidResignMain, this, [this] { set(false); });
    } else {
        connect(&activation, &WindowActivation::windowDidBecomeKey, this, [this] { set(true); });
        connect(&activation, &WindowActivation::windowDidResignKey, this, [this] { set(false); });
    }
    // A view that is made after its window was shown has missed the signal.
    const auto holder = status == Status::Main ? &WindowActivation::mainWindow : &WindowActivation::keyWindow;
    if ((activation.*holder)()) {
        QMetaObject::invokeMethod(
            this, [this, &activation, holder] { set((activation.*holder)() != nullptr); }, Qt::QueuedConnection);
    }
}

void ActivationFlag::set(bool isSet)
{
    if (m_isSet == isSet) {
        return;
    }
    m_isSet = isSet;
    Q_EMIT changed();
}

} // namespace tunedeck
