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
    m_followsPointer = false;
    m_pressPosition.reset();
    if (event->button() == Qt::LeftButton) {
        m_pressPosition = event->position().toPoint();
    }
}

void PlaylistWindow::mouseMoveEvent(QMouseEvent *event)
{
    if (!m_pressPosition) {
        return;
    }
    if (m_followsPointer) {
        move(event->globalPosition().toPoint() - *m_pressPosition);
        return;
    }
    const QPoint position = event->position().toPoint();
    if ((position - *m_pressPosition).manhattanLength() < QApplication::startDragDistance()) {
        return;
    }
    if (windowHandle()->startSystemMove()) {
        m_pressPosition.reset();
        return;
    }
    m_followsPointer = true;
    move(event->globalPosition().toPoint() - *m_pressPosition);
}

void PlaylistWindow::mouseReleaseEvent(QMouseEvent *)
{
    m_pressPosition.reset();
    m_followsPointer = false;
}

} // namespace tunedeck
