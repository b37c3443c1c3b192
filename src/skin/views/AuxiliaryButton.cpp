// SPDX-License-Identifier: MIT
#include "skin/views/AuxiliaryButton.h"

#include "skin/looks/FocusRing.h"

#include <QPaintEvent>
#include <QPainter>

namespace tunedeck {

AuxiliaryButton::AuxiliaryButton(const SkinEnvironment &environment, QWidget *parent)
    : SkinnedButton(parent)
{
    new FocusRing(*this, environment);
}

void AuxiliaryButton::paintEvent(QPaintEvent *)
{
    const AuxiliaryButtonState state{.isPressed = isDown()};
    QPainter painter(this);
    m_faces.draw(painter, rect(), state, [this, state](QPainter &face) { m_cell.draw(face, rect(), state); });
}

} // namespace tunedeck
