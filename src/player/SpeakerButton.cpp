// SPDX-License-Identifier: MIT
#include "player/SpeakerButton.h"

#include "skin/views/VolumeSlider.h"

#include <QWheelEvent>

namespace tunedeck {

SpeakerButton::SpeakerButton(const SkinEnvironment &environment, VolumeSlider &slider, QWidget *parent)
    : PlainButton(environment, parent)
    , m_slider(slider)
{
}

void SpeakerButton::wheelEvent(QWheelEvent *event)
{
    event->accept();
    m_slider.scroll(*event);
}

} // namespace tunedeck
