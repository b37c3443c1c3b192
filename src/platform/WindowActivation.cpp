// SPDX-License-Identifier: MIT
#include "platform/WindowActivation.h"

#include <QGuiApplication>
#include <QWindow>

#include <utility>

namespace tunedeck {

namespace {
bool isPopup(const QWindow &window)
{
    return window.type() == Qt::Popup || window.type() == Qt::ToolTip;
}

bool isPanel(const QWindow &window)
{
    return window.type() == Qt::Tool || window.type() == Qt::Dialog;
}
} // namespace

WindowActivation::WindowActivation(QObject *parent)
    : QObject(parent)
{
    connect(qGuiApp, &QGuiApplication::focusWindowChanged, this, &WindowActivation::follow);
    follow(QGuiApplication::focusWindow());
}

QWindow *WindowActivation::keyWindow() const
{
    return m_keyWindow;
}

QWindow *WindowActivation::mainWindow() const
{
    return m_mainWindow;
}

void WindowActivation::follow(QWindow *focusWindow)
{
    if (focusWindow && isPopup(*focusWindow)) {
        return;
    }
    const QPointer<QWindow> oldKey = std::exchange(m_keyWindow, focusWindow);
    const QPointer<QWindow> oldMain = m_mainWindow;
    if (!focusWindow) {
        m_mainWindow.clear();
    } else if (isPanel(*focusWindow)) {
        // A user who returns from another program by clicking a panel works with the former main window again.
        m_mainWindow = m_lastMainWindow;
    } else {
        m_mainWindow = m_lastMainWindow = focusWindow;
    }

    const bool keyChanges = oldKey != m_keyWindow;
    const bool mainChanges = oldMain != m_mainWindow;
    if (keyChanges && oldKey) {
        Q_EMIT windowDidResignKey(oldKey);
    }
    if (mainChanges && oldMain) {
        Q_EMIT windowDidResignMain(oldMain);
    }
    if (keyChanges && m_keyWindow) {
        Q_EMIT windowDidBecomeKey(m_keyWindow);
        Q_EMIT anyWindowDidBecomeKey();
    }
    if (mainChanges && m_mainWindow) {
        Q_EMIT windowDidBecomeMain(m_mainWindow);
    }
}

} // namespace tunedeck
