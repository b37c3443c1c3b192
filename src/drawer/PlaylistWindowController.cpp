// SPDX-License-Identifier: MIT
#include "drawer/PlaylistWindowController.h"

#include <QPalette>

namespace tunedeck {

PlaylistWindowController::PlaylistWindowController(QObject *parent)
    : QObject(parent)
{
    windowDidLoad();
}

void PlaylistWindowController::windowDidLoad()
{
    // Not fully transparent: a desktop could let clicks fall through a transparent background.
    QPalette palette = m_window.palette();
    palette.setColor(QPalette::Window, QColor::fromRgbF(0, 0, 0, 0.0001F));
    m_window.setPalette(palette);
    m_window.setAutoFillBackground(true);
    m_window.invalidateShadow();
}

} // namespace tunedeck
