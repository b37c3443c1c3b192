// SPDX-License-Identifier: MIT
#include "skin/views/WindowButtonsView.h"

#include <QApplication>
#include <QMouseEvent>

namespace tunedeck {

void WindowButtonsView::enterEvent(QEnterEvent *event)
{
    QWidget::enterEvent(event);
    setMouseHovering(true);
    qApp->installEventFilter(this);
}

void WindowButtonsView::leaveEvent(QEvent *event)
{
    QWidget::leaveEvent(event);
    endHovering();
}

/// While a menu is open, Qt reports no Leave to what the pointer leaves.
bool WindowButtonsView::eventFilter(QObject *watched, QEvent *event)
{
    if (event->type() == QEvent::MouseMove && QApplication::activePopupWidget()) {
        const QPoint pointer = static_cast<QMouseEvent *>(event)->globalPosition().toPoint();
        if (!rect().contains(mapFromGlobal(pointer))) {
            endHovering();
        }
    }
    return QWidget::eventFilter(watched, event);
}

void WindowButtonsView::endHovering()
{
    qApp->removeEventFilter(this);
    setMouseHovering(false);
}

void WindowButtonsView::setMouseHovering(bool isHovering)
{
    m_mouseHovering = isHovering;
    Q_EMIT mouseHoveringChanged(isHovering);
}

} // namespace tunedeck
