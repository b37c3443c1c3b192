// SPDX-License-Identifier: MIT
#pragma once

#include "skin/looks/SkinEnvironment.h"
#include "skin/views/PercentSlider.h"

namespace tunedeck {

/// The slider on the LCD that shows and sets the position in the track.
class ClassicAudioProgressSlider : public PercentSlider {
    Q_OBJECT

public:
    explicit ClassicAudioProgressSlider(const SkinEnvironment &environment, QWidget *parent = nullptr);

protected:
    void paintEvent(QPaintEvent *event) override;

private:
    SkinEnvironment m_environment;
};

} // namespace tunedeck
