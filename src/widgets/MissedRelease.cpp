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
    m_undelivered.setSingleShot(true);
    connect(&m_undelivered, &QTimer::timeout, this, &MissedRelease::miss);
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
    default:
        break;
    }
    return QObject::eventFilter(watched, event);
}

void MissedRelease::handleRelease(const QObject &watched)
{
    if (!watched.isWidgetType()) {
        // Native windows get the event first and hand it on to a widget, but not once a menu has closed.
        m_undelivered.start();
    } else if (&watched == &m_control) {
        stop();
    } else {
        miss();
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
    m_undelivered.stop();
    qApp->installEventFilter(this);
}

void MissedRelease::stop()
{
    m_undelivered.stop();
    qApp->removeEventFilter(this);
}

void MissedRelease::miss()
{
    stop();
    Q_EMIT missed();
}

} // namespace tunedeck
