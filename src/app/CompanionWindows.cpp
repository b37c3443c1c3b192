// SPDX-License-Identifier: MIT
#include "app/CompanionWindows.h"

#include "drawer/PlaylistWindow.h"
#include "window/Window.h"
#include "window/WindowController.h"

#include <QApplication>
#include <QEvent>
#include <QScreen>
#include <QStyle>
#include <QWindow>

#include <algorithm>

namespace tunedeck {

namespace {
constexpr int gap = 12;

/// Menus and tooltips place themselves, and the player's own windows are no companions.
bool isCompanion(const QWidget &window)
{
    const bool isOrdinary = window.windowType() == Qt::Window || window.windowType() == Qt::Dialog;
    return isOrdinary && window.isWindow() && !qobject_cast<const Window *>(&window)
        && !qobject_cast<const PlaylistWindow *>(&window);
}

/// The place for `length` points between `first` and `last` that is nearest to `wanted`.
int movedBetween(int first, int last, int wanted, int length)
{
    return std::max(first, std::min(wanted, last - length + 1));
}

/// The places for a window of `size` on each side of `player`, the best first, moved into `area`.
QList<QPoint> placesBeside(const QRect &player, QSize size, const QRect &area)
{
    QRect centred(QPoint(), size);
    centred.moveCenter(player.center());
    QList<QPoint> places{{centred.x(), player.bottom() + 1 + gap}, {centred.x(), player.top() - gap - size.height()},
        {player.right() + 1 + gap, player.top()}, {player.left() - gap - size.width(), player.top()}};
    for (QPoint &place : places) {
        place = {movedBetween(area.left(), area.right(), place.x(), size.width()),
            movedBetween(area.top(), area.bottom(), place.y(), size.height())};
    }
    return places;
}

/// The player with its drawer, which may be open later.
QRect playersPlace(const Window &player)
{
    QRect place(player.mapToGlobal(player.contentRect().topLeft()), player.contentRect().size());
    place.setHeight(WindowController::expandedHeight);
    return place;
}

/// The frame that the window manager adds is unknown until the window is shown.
QSize expectedFrameSize(const QWidget &window)
{
    const QSize known = window.frameGeometry().size();
    return known != window.size() ? known : known + QSize(0, window.style()->pixelMetric(QStyle::PM_TitleBarHeight));
}

int coveredArea(const QRect &covered, const QRect &by)
{
    const QRect common = covered.intersected(by);
    return common.width() * common.height();
}

QPoint placeBeside(const Window &player, const QWidget &window)
{
    const QRect area = player.screen()->availableGeometry();
    const QRect place = playersPlace(player);
    const QSize size = expectedFrameSize(window);
    const QList<QPoint> places = placesBeside(place, size, area);
    const auto coveredFrom = [&](QPoint origin) { return coveredArea(place, QRect(origin, size)); };
    return *std::ranges::min_element(places, std::ranges::less{}, coveredFrom);
}
} // namespace

CompanionWindows::CompanionWindows(Window &player, QObject *parent)
    : QObject(parent)
    , m_player(player)
{
    qApp->installEventFilter(this);
    connect(&player, &Window::levelChanged, this, &CompanionWindows::applyFlagsToAll);
}

bool CompanionWindows::eventFilter(QObject *watched, QEvent *event)
{
    // Qt sends this event before it shows the window on the screen.
    if (event->type() == QEvent::Show && !event->spontaneous() && watched->isWidgetType()) {
        auto &window = *static_cast<QWidget *>(watched);
        if (isCompanion(window)) {
            join(window);
        }
    }
    // A window's frame is unknown until it is shown. This is the last moment at which a place can be given to the
    // frame.
    if (event->type() == QEvent::Show && m_places.contains(watched)) {
        static_cast<QWindow *>(watched)->setFramePosition(m_places.take(watched));
    }
    return QObject::eventFilter(watched, event);
}

void CompanionWindows::join(QWidget &window)
{
    window.windowHandle()->setTransientParent(m_player.windowHandle());
    applyFlags(window);
    const QRect frame(window.pos(), expectedFrameSize(window));
    if (!window.testAttribute(Qt::WA_Moved) || frame.intersects(playersPlace(m_player))) {
        place(window);
    }
}

void CompanionWindows::place(QWidget &window)
{
    const QPoint place = placeBeside(m_player, window);
    window.move(place);
    m_places.insert(window.windowHandle(), place);
}

void CompanionWindows::applyFlags(QWidget &window) const
{
    // On X11, Qt says only of dialogs which window they belong to.
    Qt::WindowFlags flags = (window.windowFlags() & ~Qt::WindowType_Mask) | Qt::Dialog;
    // Some window managers stack a window above the one that it belongs to only within one level.
    flags.setFlag(Qt::WindowStaysOnTopHint, m_player.level() == WindowLevel::Floating);
    // Otherwise the widget restores its own flags when it is shown.
    window.overrideWindowFlags(flags);
    window.windowHandle()->setFlags(flags);
}

void CompanionWindows::applyFlagsToAll() const
{
    const QWidgetList windows = QApplication::topLevelWidgets();
    for (QWidget *window : windows) {
        if (isCompanion(*window) && window->isVisible()) {
            applyFlags(*window);
        }
    }
}

} // namespace tunedeck
