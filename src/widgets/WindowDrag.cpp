// SPDX-License-Identifier: MIT
#include "widgets/WindowDrag.h"

#include <QApplication>
#include <QWidget>
#include <QWindow>

#include <algorithm>
#include <utility>

namespace tunedeck {

namespace {
Qt::Edges edgesAt(QPoint position, const QRect &content)
{
    const QRect inside = content.adjusted(WindowDrag::edgeWidth, 0, -WindowDrag::edgeWidth, 0);
    if (position.x() < inside.left()) {
        return Qt::LeftEdge;
    }
    if (position.x() > inside.right()) {
        return Qt::RightEdge;
    }
    return {};
}
} // namespace

WindowDrag::WindowDrag(QWidget &window)
    : m_window(window)
{
}

void WindowDrag::showCursor(QPoint position, const QRect &content)
{
    const Qt::CursorShape shape = edgesAt(position, content) ? Qt::SizeHorCursor : Qt::ArrowCursor;
    if (m_window.cursor().shape() != shape) {
        m_window.setCursor(shape);
    }
}

void WindowDrag::press(QPoint position, const QRect &content)
{
    m_press = {position, edgesAt(position, content)};
}

void WindowDrag::pressBackground(QPoint position)
{
    m_press = {position, {}};
}

void WindowDrag::move(QPoint position, QPoint pointer)
{
    if (m_ownDrag) {
        follow(pointer);
        return;
    }
    // The window manager gets the drag only now, not at the press: after a mere click it might notice the release too
    // late, and go on moving the window with no button down.
    if (!m_press || (position - m_press->position).manhattanLength() < QApplication::startDragDistance()) {
        return;
    }
    const Press press = *std::exchange(m_press, std::nullopt);
    QWindow &native = *m_window.windowHandle();
    const bool isTakenOver = press.edges ? native.startSystemResize(press.edges) : native.startSystemMove();
    if (!isTakenOver) {
        m_ownDrag = {press.edges, m_window.mapToGlobal(press.position), m_window.geometry()};
        follow(pointer);
    }
}

void WindowDrag::end()
{
    m_press.reset();
    m_ownDrag.reset();
}

void WindowDrag::follow(QPoint pointer)
{
    const QPoint way = pointer - m_ownDrag->start;
    QRect frame = m_ownDrag->frame;
    const auto allowed = [this](
                             int width) { return std::clamp(width, m_window.minimumWidth(), m_window.maximumWidth()); };
    if (!m_ownDrag->edges) {
        frame.translate(way);
    } else if (m_ownDrag->edges.testFlag(Qt::LeftEdge)) {
        frame.setLeft(frame.right() + 1 - allowed(frame.width() - way.x()));
    } else {
        frame.setWidth(allowed(frame.width() + way.x()));
    }
    m_window.setGeometry(frame);
}

} // namespace tunedeck
