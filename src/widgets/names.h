// SPDX-License-Identifier: MIT
#pragma once

#include <QString>
#include <QWidget>

namespace tunedeck {

/// Gives `control` the same name for screen readers and as its tooltip.
inline void setName(QWidget &control, const QString &name)
{
    control.setAccessibleName(name);
    control.setToolTip(name);
}

/// Changes the name that screen readers read out. Qt announces every assignment to them, also of an equal name.
inline void updateAccessibleName(QWidget &control, const QString &name)
{
    if (control.accessibleName() != name) {
        control.setAccessibleName(name);
    }
}

} // namespace tunedeck
