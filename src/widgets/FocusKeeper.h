// SPDX-License-Identifier: MIT
#pragma once

#include <QPointer>
#include <QWidget>

namespace tunedeck {

/// Keeps the keyboard focus of a control that is disabled for a while. Qt would move it to the next control, where
/// Space does something else, and leave it there.
class FocusKeeper {
public:
    /// Call this before `control` is disabled. If it has the focus in its window, no control has it then.
    void take(QWidget &control)
    {
        if (control.window()->focusWidget() == &control) {
            m_control = &control;
            control.clearFocus();
        }
    }

    /// Call this after controls were enabled or disabled. Gives the focus back to the control if it is enabled again,
    /// unless the user has put the focus elsewhere.
    void giveBack()
    {
        if (!m_control || !m_control->isEnabled()) {
            return;
        }
        if (!m_control->window()->focusWidget()) {
            m_control->setFocus(Qt::TabFocusReason);
        }
        m_control.clear();
    }

private:
    QPointer<QWidget> m_control;
};

} // namespace tunedeck
