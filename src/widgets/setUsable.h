// SPDX-License-Identifier: MIT
#pragma once

#include <QString>
#include <QWidget>

namespace tunedeck {

/// Gives `control` the tooltip `toolTip` where `obstacle` is empty. Else its tooltip and its description for screen
/// readers are the obstacle.
inline void explain(QWidget &control, const QString &obstacle, const QString &toolTip)
{
    control.setToolTip(obstacle.isEmpty() ? toolTip : obstacle);
    // Qt announces every assignment to screen readers, also of an equal text.
    if (control.accessibleDescription() != obstacle) {
        control.setAccessibleDescription(obstacle);
    }
}

/// Enables `control` where `obstacle` is empty, else disables it, and explains it.
inline void setUsable(QWidget &control, const QString &obstacle, const QString &toolTip)
{
    control.setEnabled(obstacle.isEmpty());
    explain(control, obstacle, toolTip);
}

} // namespace tunedeck
