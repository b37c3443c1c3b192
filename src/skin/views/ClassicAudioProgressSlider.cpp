// SPDX-License-Identifier: MIT
#include "skin/views/ClassicAudioProgressSlider.h"

#include "skin/cells/ClassicAudioProgressSliderCell.h"
#include "skin/drawing/Shapes.h"
#include "skin/drawing/flipY.h"
#include "skin/looks/FocusPointers.h"
#include "skin/looks/skinLooks.h"

#include <QPaintEvent>
#include <QPainter>

namespace tunedeck {

namespace {
QRectF drawnBounds(const QRectF &control)
{
    constexpr double frameHeight = 10;
    return inset(control, 0, (control.height() - frameHeight) / 2);
}
} // namespace

ClassicAudioProgressSlider::ClassicAudioProgressSlider(const SkinEnvironment &environment, QWidget *parent)
    : PercentSlider(ClassicAudioProgressSliderCell::knobSize, parent)
    , m_environment(environment)
{
    repaintOnNewLooks(*this, environment);
    new FocusPointers(*this, environment, &drawnBounds);
}

void ClassicAudioProgressSlider::paintEvent(QPaintEvent *)
{
    const bool isFull = isHighContrast(m_environment);
    QPainter painter(this);
    flipY(painter, height());
    ClassicAudioProgressSliderCell::drawBarInside(painter, barRect(), knobRect(), isEnabled(), isFull);
    ClassicAudioProgressSliderCell::drawKnob(painter, knobRect(), isEnabled(), isFull);
}

} // namespace tunedeck
