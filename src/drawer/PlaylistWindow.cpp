// SPDX-License-Identifier: MIT
#include "drawer/PlaylistWindow.h"

#include <QApplication>
#include <QMouseEvent>
#include <QScreen>
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
    if (event->button() == Qt::LeftButton) {
        m_pressPosition = event->position().toPoint();
    }
}

void PlaylistWindow::mouseMoveEvent(QMouseEvent *event)
{
    const QPoint position = event->position().toPoint();
    if (m_pressPosition && (position - *m_pressPosition).manhattanLength() >= QApplication::startDragDistance()) {
        m_pressPosition.reset();
        windowHandle()->startSystemMove();
    }
}

void PlaylistWindow::mouseReleaseEvent(QMouseEvent *)
{
    m_pressPosition.reset();
}

} // namespace tunedeck
