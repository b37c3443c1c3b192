// SPDX-License-Identifier: MIT
#pragma once

#include "skin/cells/VolumeSliderCell.h"
#include "skin/drawing/FaceCache.h"
#include "skin/looks/SkinEnvironment.h"
#include "skin/views/PercentSlider.h"

#include <QPoint>

#include <variant>

namespace tunedeck {

/// Whom a VolumeSlider asks for the volume steps that a wheel or a touchpad makes over it.
class VolumeSliderScrollEventDelegate {
public:
    virtual ~VolumeSliderScrollEventDelegate() = default;
    /// Changes the volume by `delta` percent, within 0 to 100.
    virtual void adjustVolume(double delta) = 0;
    /// After each such step.
    virtual void volumeSliderDidScroll() = 0;
};

/// The slider of the volume, in percent. A notch of a mouse wheel is 4 percent; a touchpad moves the volume as it
/// scrolls. It does not move its own knob then: the new volume comes back as any other does.
class VolumeSlider : public PercentSlider {
    Q_OBJECT

public:
    /// Percent of a wheel's notch, and of an arrow key.
    static constexpr double step = 4;

    explicit VolumeSlider(const SkinEnvironment &environment, QWidget *parent = nullptr);

    /// `delegate` must outlive the slider or be taken back with null. Without one, scrolling does nothing.
    void setScrollEventsDelegate(VolumeSliderScrollEventDelegate *delegate);
    /// Where a wheel or a touchpad counts; what is scrolled over the margins goes to no one.
    [[nodiscard]] QRectF customHitTestArea() const;
    /// Of the last scroll event that counted, in milliseconds of the window system's clock; 0 before the first.
    [[nodiscard]] quint64 lastTimestamp() const { return m_lastTimestamp; }

protected:
    void paintEvent(QPaintEvent *event) override;
    void wheelEvent(QWheelEvent *event) override;

private:
    void paintBar(QPainter &painter);
    void paintKnob(QPainter &painter);
    [[nodiscard]] double wheelStep(const QWheelEvent &event);

    SkinEnvironment m_environment;
    VolumeSliderCell m_cell;
    /// Of the groove, by whether it is dark.
    FaceCache<bool> m_bars;
    FaceCache<std::monostate> m_knobs;
    VolumeSliderScrollEventDelegate *m_scrollEventsDelegate = nullptr;
    quint64 m_lastTimestamp = 0;
    /// What a high-resolution wheel has turned since the last whole notch, in eighths of a degree.
    QPoint m_turned;
};

} // namespace tunedeck
