// SPDX-License-Identifier: MIT
#pragma once

#include "skin/cells/WindowControlButtonCell.h"
#include "skin/drawing/FaceCache.h"
#include "skin/looks/ActivationFlag.h"
#include "skin/looks/SkinEnvironment.h"
#include "skin/views/SkinnedButton.h"

#include <QPainterPath>

#include <optional>

namespace tunedeck {

/// A gem that closes, minimises or maximises the window. It shows its symbol only while the pointer is over the group
/// of the window's buttons.
class WindowControlButton : public SkinnedButton {
    Q_OBJECT

public:
    explicit WindowControlButton(const SkinEnvironment &environment, QWidget *parent = nullptr);

    [[nodiscard]] bool isMainWindow() const { return m_isMainWindow.isSet(); }
    /// Close at first.
    [[nodiscard]] WindowControlButtonStyle controlStyle() const { return m_controlStyle; }
    void setControlStyle(WindowControlButtonStyle style);
    [[nodiscard]] bool mouseHovering() const { return m_mouseHovering; }
    void setMouseHovering(bool isHovering);
    /// The part of the button that takes a press, in the button's coordinates and points. Nothing sets it yet, so the
    /// whole button does.
    [[nodiscard]] const std::optional<QPainterPath> &customHitTestArea() const { return m_customHitTestArea; }
    void setCustomHitTestArea(const std::optional<QPainterPath> &area) { m_customHitTestArea = area; }

protected:
    void mousePressEvent(QMouseEvent *event) override;
    void paintEvent(QPaintEvent *event) override;

private:
    [[nodiscard]] WindowControlButtonState state() const;

    SkinEnvironment m_environment;
    ActivationFlag m_isMainWindow;
    WindowControlButtonCell m_cell;
    FaceCache<WindowControlButtonState> m_faces;
    WindowControlButtonStyle m_controlStyle = WindowControlButtonStyle::close;
    bool m_mouseHovering = false;
    std::optional<QPainterPath> m_customHitTestArea;
};

} // namespace tunedeck
