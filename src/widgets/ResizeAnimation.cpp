// SPDX-License-Identifier: MIT
#include "widgets/ResizeAnimation.h"

#include <QSignalBlocker>
#include <QStyle>
#include <QWidget>

namespace tunedeck {

ResizeAnimation::ResizeAnimation(const QWidget &window)
    : m_window(window)
{
    setEasingCurve(QEasingCurve::OutCubic);
}

void ResizeAnimation::run(const QVariant &from, const QVariant &to)
{
    {
        // Each setter would emit a value computed from the old and the new settings mixed.
        const QSignalBlocker blocker(this);
        setDuration(m_isMotionReduced
                ? 0
                : m_window.style()->styleHint(QStyle::SH_Widget_Animation_Duration, nullptr, &m_window));
        setStartValue(from);
        setEndValue(to);
    }
    start();
}

} // namespace tunedeck
