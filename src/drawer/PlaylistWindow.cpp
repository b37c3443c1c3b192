// SPDX-License-Identifier: MIT
#include "drawer/PlaylistWindow.h"

#include <QMouseEvent>
#include <QWindow>

namespace tunedeck {

PlaylistWindow::PlaylistWindow(QWidget *parent)
    : QWidget(parent, Qt::Window | Qt::FramelessWindowHint)
{
    setAttribute(Qt::WA_TranslucentBackground);
    create();
    connect(windowHandle(), &QWindow::screenChanged, this, &PlaylistWindow::invalidateShadow);
}

void PlaylistWindow::invalidateShadow()
{
    update();
}

void PlaylistWindow::mousePressEvent(QMouseEvent *event)
{
    m_drag.end();
    if (event->button() == Qt::LeftButton) {
        m_drag.pressBackground(event->position().toPoint());
    }
}

void PlaylistWindow::mouseMoveEvent(QMouseEvent *event)
{
    m_drag.move(event->position().toPoint(), event->globalPosition().toPoint());
}

void PlaylistWindow::mouseReleaseEvent(QMouseEvent *)
{
    m_drag.end();
}

} // namespace tunedeck
