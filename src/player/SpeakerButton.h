// SPDX-License-Identifier: MIT
#pragma once

#include "skin/views/PlainButton.h"

#include <optional>

namespace tunedeck {

class VolumeSlider;

/// A speaker at one end of the volume slider. A wheel or a touchpad scrolls the volume over it as over the slider.
class SpeakerButton : public PlainButton {
    Q_OBJECT

public:
    /// `slider` must outlive the button.
    SpeakerButton(const SkinEnvironment &environment, VolumeSlider &slider, QWidget *parent = nullptr);

    enum class Speaker { Quiet, Loud, Muted };
    void setSpeaker(Speaker speaker);

protected:
    void wheelEvent(QWheelEvent *event) override;

private:
    VolumeSlider &m_slider;
    std::optional<Speaker> m_speaker;
};

} // namespace tunedeck
