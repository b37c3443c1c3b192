// SPDX-License-Identifier: MIT
#include "skin/views/AboutPinstripeView.h"

#include "skin/looks/skinLooks.h"

#include <QPaintEvent>
#include <QPainter>

namespace tunedeck {

AboutPinstripeView::AboutPinstripeView(const SkinEnvironment &environment, QWidget *parent)
    : QWidget(parent)
    , m_environment(environment)
{
    repaintOnNewLooks(*this, environment);
}

void AboutPinstripeView::setKeyWindow(bool isKeyWindow)
{
    if (m_isKeyWindow == isKeyWindow) {
        return;
    }
    m_isKeyWindow = isKeyWindow;
    update();
    Q_EMIT isKeyWindowChanged(isKeyWindow);
}

void AboutPinstripeView::paintEvent(QPaintEvent *)
{
    QPainter painter(this);
    painter.setRenderHint(QPainter::Antialiasing);
    m_cell.draw(painter, rect(), height(), {.isKeyWindow = m_isKeyWindow, .isDark = isDark(m_environment)});
}

} // namespace tunedeck
