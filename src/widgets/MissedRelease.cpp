// SPDX-License-Identifier: MIT
#include "widgets/MissedRelease.h"

#include <QApplication>
#include <QMouseEvent>
#include <QWidget>
#include <QWindow>

namespace tunedeck {

namespace {
bool isPopup(const QObject &object)
{
    return object.isWidgetType() && static_cast<const QWidget &>(object).windowType() == Qt::Popup;
}

bool concernsLeftButton(const QEvent &event)
{
    return static_cast<const QMouseEvent &>(event).button() == Qt::LeftButton;
}
} // namespace

MissedRelease::MissedRelease(QWidget &control)
    : m_control(control)
{
    m_soon.setSingleShot(true);
    m_soon.setInterval(0);
    connect(&m_soon, &QTimer::timeout, this, &MissedRelease::miss);
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
        if (concernsLeftButton(*event)) {
            handleRelease(*watched);
        }
        break;
    case QEvent::Expose:
        if (isWindowGone(*watched)) {
            miss();
        }
        break;
    case QEvent::Hide:
        // On X11, a release that is on its way to the menu's window gets lost with that window.
        if (isPopup(*watched)) {
            miss();
        }
        break;
    default:
        break;
    }
    return QObject::eventFilter(watched, event);
}

void MissedRelease::handleRelease(const QObject &watched)
{
    if (&watched == &m_control) {
        stop();
    } else if (watched.isWidgetType()) {
        miss();
    } else if (&watched == m_control.window()->windowHandle()) {
        // The control gets it after its window, or not at all: where a menu took the press of another button that is
        // still down, Qt gives the press of the left one to the control and its release to no widget.
        m_soon.start();
    }
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
    m_soon.stop();
    qApp->removeEventFilter(this);
}

void MissedRelease::miss()
{
    stop();
    Q_EMIT missed();
}

} // namespace tunedeck
