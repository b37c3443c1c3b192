// SPDX-License-Identifier: MIT
#include "skin/views/ShadowView.h"

#include "skin/drawing/flipY.h"

#include <QPaintEvent>
#include <QPainter>

namespace tunedeck {

ShadowView::ShadowView(const SkinEnvironment &environment, QWidget *parent)
    : QWidget(parent)
    , m_isMainWindow(environment.windowActivation, ActivationFlag::Status::Main)
{
    setAttribute(Qt::WA_TransparentForMouseEvents);
    connect(&m_isMainWindow, &ActivationFlag::changed, this, qOverload<>(&QWidget::update));
}

void ShadowView::paintEvent(QPaintEvent *)
{
    QPainter painter(this);
    m_faces.draw(painter, rect(), {}, [this](QPainter &face) {
        flipY(face, height());
        m_cell.drawShadow(face, rect());
    });
}

} // namespace tunedeck
