// SPDX-License-Identifier: MIT
#include "PlaylistWindow.h"

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

} // namespace tunedeck
