// SPDX-License-Identifier: MIT
#include "skin/views/WindowButtonsView.h"

namespace tunedeck {

void WindowButtonsView::enterEvent(QEnterEvent *event)
{
    QWidget::enterEvent(event);
    setMouseHovering(true);
}

void WindowButtonsView::leaveEvent(QEvent *event)
{
    QWidget::leaveEvent(event);
    setMouseHovering(false);
}

void WindowButtonsView::setMouseHovering(bool isHovering)
{
    m_mouseHovering = isHovering;
    Q_EMIT mouseHoveringChanged(isHovering);
}

} // namespace tunedeck
