// SPDX-License-Identifier: MIT
#pragma once

#include <QEvent>

namespace tunedeck {

/// Whether `event` presses or releases a mouse button.
[[nodiscard]] inline bool isMouseButtonEvent(const QEvent &event)
{
    return event.type() == QEvent::MouseButtonPress || event.type() == QEvent::MouseButtonRelease
        || event.type() == QEvent::MouseButtonDblClick;
}

} // namespace tunedeck
