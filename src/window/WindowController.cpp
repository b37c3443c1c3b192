// SPDX-License-Identifier: MIT
#include "window/WindowController.h"

#include "music/MenuItemIdentifier.h"
#include "platform/UserDefaults.h"

#include <QAction>

#include <algorithm>

namespace tunedeck {

WindowController::WindowController(UserDefaults &defaults, QObject *parent)
    : DrawerHost(parent)
    , m_defaults(defaults)
    , m_window(*this)
{
    connect(&m_heightAnimation, &QVariantAnimation::valueChanged, this,
        [this](const QVariant &height) { m_room.setHeight(height.toInt()); });
    connect(&m_heightAnimation, &QVariantAnimation::finished, this, &WindowController::finishResize);
    limitHeight(collapsedHeight, collapsedHeight);
    // The compositor shows the window once it has painted itself, which comes after this event.
    connect(&m_window, &Window::canBeSeenChanged, &m_keptAbove, &KeptAbove::setSeen, Qt::QueuedConnection);
    m_defaults.bind(SettingsKey::keepMainWindowAboveAllOtherWindows, this,
        [this](bool keepAbove) { setKeepAboveAllWindows(keepAbove); });
}

void WindowController::setKeepAboveAllWindows(bool keepAbove)
{
    m_keepAboveAllWindows = keepAbove;
    m_window.setLevel(keepAbove ? WindowLevel::Floating : WindowLevel::Normal);
    m_keptAbove.setWanted(keepAbove);
    Q_EMIT keepAboveAllWindowsChanged(keepAbove);
}

void WindowController::setExpanded(bool expanded)
{
    m_isExpanded = expanded;
    resizeToTargetHeight();
}

bool WindowController::validateMenuItem(QAction &item) const
{
    if (item.objectName() != MenuItemIdentifier::keepAboveAllWindows) {
        return false;
    }
    item.setChecked(m_defaults.boolForKey(SettingsKey::keepMainWindowAboveAllOtherWindows));
    return true;
}

void WindowController::toggleKeepMainWindowAboveAllOtherWindows()
{
    const QString &key = SettingsKey::keepMainWindowAboveAllOtherWindows;
    if (!m_keptAbove.canToggle()) {
        return;
    }
    const bool takesRestart = m_keptAbove.way() == AboveWay::Restart;
    m_defaults.setValue(key, !m_defaults.boolForKey(key));
    if (takesRestart) {
        Q_EMIT restartRequested();
    }
}

int WindowController::targetHeight() const
{
    return m_isExpanded ? expandedHeight : collapsedHeight;
}

void WindowController::limitHeight(int minimum, int maximum)
{
    m_window.setContentSizeLimits({Window::minimumContentWidth, minimum}, {Window::maximumContentWidth, maximum});
}

void WindowController::resizeToTargetHeight()
{
    m_heightAnimation.stop();
    const int height = m_window.contentRect().height();
    const int target = targetHeight();
    if (height == target) {
        finishResize();
        return;
    }
    // Window managers refuse a size outside the limits, so these include every step of the animation.
    limitHeight(std::min(height, target), std::max(height, target));
    if (m_isExpanded) {
        m_room.beginOpening();
    } else {
        m_room.beginClosing();
    }
    m_heightAnimation.run(height, target);
}

void WindowController::finishResize()
{
    if (m_isExpanded) {
        m_room.finishOpening(targetHeight());
    } else {
        m_room.finishClosing();
    }
    limitHeight(targetHeight(), targetHeight());
    Q_EMIT isExpandedChanged(m_isExpanded);
}

} // namespace tunedeck
