// SPDX-License-Identifier: MIT
#include "ClassicAudioProgressSlider.h"

#include "ClassicAudioProgressSliderCell.h"
#include "FocusRing.h"
#include "turnUpwards.h"

#include <QPainter>

namespace tunedeck {

ClassicAudioProgressSlider::ClassicAudioProgressSlider(const SkinEnvironment &environment, QWidget *parent)
    : PercentSlider(ClassicAudioProgressSliderCell::knobSize, parent)
{
    constexpr int frameHeight = 10;
    new FocusRing(*this, environment, frameHeight);
}

void ClassicAudioProgressSlider::paintEvent(QPaintEvent *)
{
    QPainter painter(this);
    turnUpwards(painter, height());
    ClassicAudioProgressSliderCell::drawBarInside(painter, barRect(), knobRect(), isEnabled());
    ClassicAudioProgressSliderCell::drawKnob(painter, knobRect(), isEnabled());
}

} // namespace tunedeck
