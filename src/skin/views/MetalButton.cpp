// SPDX-License-Identifier: MIT
#include "skin/views/MetalButton.h"

#include "skin/drawing/metalBezel.h"
#include "skin/looks/FocusLamp.h"
#include "skin/looks/FocusRing.h"

#include <QPaintEvent>
#include <QPainter>

namespace tunedeck {

MetalButton::MetalButton(const SkinEnvironment &environment, QWidget *parent)
    : SkinnedButton(parent)
    , m_environment(environment)
    , m_isMainWindow(environment.windowActivation, ActivationFlag::Status::Main)
    , m_focusMark(new FocusRing(*this, environment, &MetalButtonCell::rim, metalRimRadius))
{
    connect(&m_isMainWindow, &ActivationFlag::changed, this, qOverload<>(&QWidget::update));
}

void MetalButton::setImage(const QString &name)
{
    if (m_image == name) {
        return;
    }
    m_image = name;
    update();
}

void MetalButton::showFocusByLamp()
{
    delete m_focusMark;
    m_focusMark = new FocusLamp(*this, m_environment, &MetalButtonCell::rim);
}

void MetalButton::drawFace(QPainter &painter, const MetalButtonState &state) const
{
    MetalButtonCell().draw(painter, rect(), state);
}

void MetalButton::paintEvent(QPaintEvent *)
{
    const MetalButtonState state = this->state();
    QPainter painter(this);
    m_faces.draw(painter, rect(), state, [this, &state](QPainter &face) { drawFace(face, state); });
}

MetalButtonState MetalButton::state() const
{
    return {.title = text(),
        .font = font(),
        .image = m_image,
        .isPressed = isDown(),
        .isEnabled = isEnabled(),
        .isMainWindow = isMainWindow()};
}

} // namespace tunedeck
