// SPDX-License-Identifier: MIT
#include "window/RoomForDrawer.h"

#include "platform/windowSystem.h"
#include "window/Window.h"

#include <QScreen>

#include <chrono>

namespace tunedeck {

namespace {
/// Time that a window manager gets to push the window up.
constexpr std::chrono::milliseconds settlingTime{1000};
} // namespace

RoomForDrawer::RoomForDrawer(Window &window, QObject *parent)
    : QObject(parent)
    , m_window(window)
{
    m_settling.setObjectName(QStringLiteral("settling"));
    m_settling.setSingleShot(true);
    m_settling.setInterval(settlingTime);
    connect(&m_settling, &QTimer::timeout, this, [this] { m_placeWhenOpen = m_window.contentGeometry().topLeft(); });
}

void RoomForDrawer::beginOpening()
{
    // A window that is on its way back has not reached its place.
    if (!m_goesBack) {
        m_before = m_window.contentGeometry();
    }
    m_isOpen = true;
    m_goesBack = false;
    m_placeWhenOpen.reset();
    m_lowerEdge = lowerEdge();
}

void RoomForDrawer::beginClosing()
{
    m_settling.stop();
    m_lowerEdge.reset();
    m_open = m_window.contentGeometry();
    m_goesBack = wasPushedTo(m_open);
}

void RoomForDrawer::setHeight(int height)
{
    QRect place = m_window.contentGeometry();
    if (!m_goesBack) {
        grow(place, height);
        return;
    }
    const double rest = double(height - m_before.height()) / (m_open.height() - m_before.height());
    place.moveTop(m_before.top() - qRound(rest * (m_before.top() - m_open.top())));
    place.setHeight(height);
    m_window.setContentGeometry(place);
}

void RoomForDrawer::grow(QRect place, int height)
{
    place.setHeight(height);
    const int missing = m_lowerEdge ? place.bottom() - *m_lowerEdge : 0;
    if (missing <= 0) {
        m_window.resizeContent(place.size());
        return;
    }
    place.translate(0, -missing);
    m_window.setContentGeometry(place);
}

/// No value where the window is not kept above the edge: the user has moved it beyond, or Wayland places it.
std::optional<int> RoomForDrawer::lowerEdge() const
{
    const int edge = m_window.screen()->availableGeometry().bottom();
    return isWayland() || m_before.bottom() > edge ? std::nullopt : std::optional(edge);
}

void RoomForDrawer::finishOpening(int height)
{
    // An animation that takes no time sets no height.
    setHeight(height);
    m_lowerEdge.reset();
    m_settling.start();
}

void RoomForDrawer::finishClosing()
{
    if (m_goesBack) {
        setHeight(m_before.height());
        m_goesBack = false;
    }
    m_isOpen = false;
}

QPoint RoomForDrawer::placeWithoutDrawer() const
{
    const QRect place = m_window.contentGeometry();
    return m_isOpen && (m_goesBack || wasPushedTo(place)) ? m_before.topLeft() : place.topLeft();
}

/// Whether the window manager, rather than the user, has brought the window from its former place to `place`.
bool RoomForDrawer::wasPushedTo(const QRect &place) const
{
    const int push = m_before.top() - place.top();
    return place.topLeft() == m_placeWhenOpen.value_or(place.topLeft()) && place.left() == m_before.left() && push > 0
        && push <= m_window.height() && place.height() > m_before.height();
}

} // namespace tunedeck
