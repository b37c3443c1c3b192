// SPDX-License-Identifier: MIT
#include "skin/views/WindowControlButton.h"

#include "skin/drawing/flipY.h"
#include "skin/looks/FocusRing.h"
#include "skin/looks/skinLooks.h"

#include <QMouseEvent>
#include <QPainter>

namespace tunedeck {

WindowControlButton::WindowControlButton(const SkinEnvironment &environment, QWidget *parent)
    : SkinnedButton(parent)
    , m_environment(environment)
    , m_isMainWindow(environment.windowActivation, ActivationFlag::Status::Main)
{
    connect(&m_isMainWindow, &ActivationFlag::changed, this, qOverload<>(&QWidget::update));
    repaintOnNewLooks(*this, environment);
    new FocusRing(*this, environment);
}

void WindowControlButton::setControlStyle(WindowControlButtonStyle style)
{
    if (m_controlStyle == style) {
        return;
    }
    m_controlStyle = style;
    update();
}

void WindowControlButton::setMouseHovering(bool isHovering)
{
    if (m_mouseHovering == isHovering) {
        return;
    }
    m_mouseHovering = isHovering;
    update();
}

void WindowControlButton::mousePressEvent(QMouseEvent *event)
{
    // A press outside the area does nothing and does not drag the window either.
    if (!m_customHitTestArea || m_customHitTestArea->contains(event->position())) {
        SkinnedButton::mousePressEvent(event);
    }
}

void WindowControlButton::paintEvent(QPaintEvent *)
{
    const WindowControlButtonState state = this->state();
    QPainter painter(this);
    m_faces.draw(painter, rect(), state, [this, &state](QPainter &face) {
        flipY(face, height());
        m_cell.draw(face, rect(), state);
    });
}

WindowControlButtonState WindowControlButton::state() const
{
    return {.controlStyle = m_controlStyle,
        .isPressed = isDown(),
        .isHovered = m_mouseHovering,
        .isDark = isDark(m_environment),
        .isGraphite = isGraphite(m_environment)};
}

} // namespace tunedeck
