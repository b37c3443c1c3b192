// SPDX-License-Identifier: MIT
#pragma once

#include "skin/cells/VolumeSliderCell.h"
#include "skin/drawing/FaceCache.h"
#include "skin/looks/SkinEnvironment.h"
#include "skin/views/PercentSlider.h"

#include <QPoint>

#include <variant>

namespace tunedeck {

/// The listener of a VolumeSlider for the volume steps that a wheel or a touchpad makes over it. It has nothing to do
/// with Qt's item delegates.
class VolumeSliderScrollEventDelegate {
public:
    virtual ~VolumeSliderScrollEventDelegate() = default;
    /// Changes the volume by `delta` percentage points; the listener keeps it from 0 to 100.
    virtual void adjustVolume(double delta) = 0;
    /// Called after each such step.
    virtual void volumeSliderDidScroll() = 0;
};

/// The slider of the volume, in percent. A notch of a mouse wheel is 4 percent; a touchpad moves the volume as it
/// scrolls. Scrolling does not move the knob: the new volume comes back from the player.
class VolumeSlider : public PercentSlider {
    Q_OBJECT

public:
    /// The step of a wheel's notch, an arrow key and a volume command, in percentage points.
    static constexpr double step = 4;

    explicit VolumeSlider(const SkinEnvironment &environment, QWidget *parent = nullptr);

    /// `delegate` must outlive the slider or be removed with null. Without one, scrolling does nothing.
    void setScrollEventsDelegate(VolumeSliderScrollEventDelegate *delegate);
    /// The area in which scrolling counts, in points. Scrolling over the margins does nothing.
    [[nodiscard]] QRectF customHitTestArea() const;
    /// The time of the last scroll event that counted, in milliseconds of the window system's clock; 0 before the
    /// first.
    [[nodiscard]] quint64 lastTimestamp() const { return m_lastTimestamp; }
    /// Changes the volume as `event` says, wherever the pointer is.
    void scroll(const QWheelEvent &event);

protected:
    void paintEvent(QPaintEvent *event) override;
    void wheelEvent(QWheelEvent *event) override;

private:
    void paintBar(QPainter &painter);
    void paintKnob(QPainter &painter);
    [[nodiscard]] bool isInverted(const QWheelEvent &event) const;
    [[nodiscard]] double touchpadStep(const QWheelEvent &event) const;
    [[nodiscard]] double wheelStep(const QWheelEvent &event);

    SkinEnvironment m_environment;
    VolumeSliderCell m_cell;
    /// The groove; the state is whether it is dark.
    FaceCache<bool> m_bars;
    FaceCache<std::monostate> m_knobs;
    VolumeSliderScrollEventDelegate *m_scrollEventsDelegate = nullptr;
    quint64 m_lastTimestamp = 0;
    /// The turn of a high-resolution wheel since the last whole notch, in eighths of a degree.
    QPoint m_turned;
};

} // namespace tunedeck
