// SPDX-License-Identifier: MIT
#include "skin/views/PinstripeView.h"

#include "skin/looks/skinLooks.h"

#include <QPaintEvent>
#include <QPainter>

namespace tunedeck {

PinstripeView::PinstripeView(const SkinEnvironment &environment, QWidget *parent)
    : QWidget(parent)
    , m_environment(environment)
    , m_isKeyWindow(environment.windowActivation, ActivationFlag::Status::Key)
{
    connect(&m_isKeyWindow, &ActivationFlag::changed, this, qOverload<>(&QWidget::update));
    repaintOnNewLooks(*this, environment);
}

void PinstripeView::setDrawsPinstripes(bool drawsPinstripes)
{
    if (m_drawsPinstripes == drawsPinstripes) {
        return;
    }
    m_drawsPinstripes = drawsPinstripes;
    update();
    Q_EMIT drawsPinstripesChanged(drawsPinstripes);
}

void PinstripeView::paintEvent(QPaintEvent *)
{
    QPainter painter(this);
    painter.setRenderHint(QPainter::Antialiasing);
    // The stripes begin at the view's left edge wherever it is dirty, so all of them are drawn, and clipped.
    m_cell.draw(painter, rect(), height(),
        {.isKeyWindow = isKeyWindow(), .drawsPinstripes = m_drawsPinstripes, .isDark = isDark(m_environment)});
}

} // namespace tunedeck
