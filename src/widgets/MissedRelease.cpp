// SPDX-License-Identifier: MIT
#include "widgets/MissedRelease.h"

#include <QApplication>
#include <QMouseEvent>
#include <QWidget>
#include <QWindow>

namespace tunedeck {

namespace {
bool concernsLeftButton(const QEvent &event)
{
    return static_cast<const QMouseEvent &>(event).button() == Qt::LeftButton;
}
} // namespace

MissedRelease::MissedRelease(QWidget &control)
    : m_control(control)
{
    m_control.installEventFilter(this);
}

bool MissedRelease::eventFilter(QObject *watched, QEvent *event)
{
    switch (event->type()) {
    case QEvent::MouseButtonPress:
    case QEvent::MouseButtonDblClick:
        if (watched == &m_control && concernsLeftButton(*event)) {
            watch();
        }
        break;
    case QEvent::MouseButtonRelease:
        // Native windows get the event first, and hand it on to a widget.
        if (watched->isWidgetType() && concernsLeftButton(*event)) {
            stop();
            if (watched != &m_control) {
                Q_EMIT missed();
            }
        }
        break;
    case QEvent::Expose:
        if (isWindowGone(*watched)) {
            stop();
            Q_EMIT missed();
        }
        break;
    default:
        break;
    }
    return QObject::eventFilter(watched, event);
}

bool MissedRelease::isWindowGone(const QObject &watched) const
{
    const QWindow *window = m_control.window()->windowHandle();
    return &watched == window && !window->isExposed();
}

/// Watches the whole program: no object of its own stands for the menu that will get the release.
void MissedRelease::watch()
{
    qApp->installEventFilter(this);
}

void MissedRelease::stop()
{
    qApp->removeEventFilter(this);
}

} // namespace tunedeck
