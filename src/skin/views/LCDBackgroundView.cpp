// SPDX-License-Identifier: MIT
#include "skin/views/LCDBackgroundView.h"

#include "skin/drawing/flipY.h"
#include "skin/looks/skinLooks.h"

#include <QPaintEvent>
#include <QPainter>

namespace tunedeck {

LCDBackgroundView::LCDBackgroundView(const SkinEnvironment &environment, QWidget *parent)
    : QWidget(parent)
    , m_environment(environment)
    , m_isMainWindow(environment.windowActivation, ActivationFlag::Status::Main)
{
    connect(&m_isMainWindow, &ActivationFlag::changed, this, qOverload<>(&QWidget::update));
    repaintOnNewLooks(*this, environment);
}

void LCDBackgroundView::paintEvent(QPaintEvent *)
{
    m_looksLog.logIfNew(*this, m_environment);
    QPainter painter(this);
    const LCDBackgroundState state{.isDark = isDark(m_environment)};
    m_faces.draw(painter, rect(), state, [this, state](QPainter &face) {
        flipY(face, height());
        m_cell.draw(face, rect(), state);
    });
}

} // namespace tunedeck
