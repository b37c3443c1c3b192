// SPDX-License-Identifier: MIT
#pragma once

#include "platform/Appearance.h"
#include "skin/cells/MetalPopupButtonCell.h"
#include "skin/drawing/FaceCache.h"
#include "skin/looks/ActivationFlag.h"
#include "skin/looks/SkinEnvironment.h"

#include <QComboBox>

#include <optional>

namespace tunedeck {

/// A pop-up button of metal, 22 points high. It shows the chosen item's text on its face and lets the user choose from
/// a list, which may be very long. A click does not take the keyboard focus; Tab does. A margin of 9 points left of
/// the face does not react.
class MetalPopupButton : public QComboBox {
    Q_OBJECT

public:
    explicit MetalPopupButton(const SkinEnvironment &environment, QWidget *parent = nullptr);

    [[nodiscard]] bool isMainWindow() const { return m_isMainWindow.isSet(); }
    /// The appearance of the list. Without a value, the default, it is that of the application. The metal looks the
    /// same in all.
    void setAppearance(std::optional<AppearanceName> appearance);

    void showPopup() override;
    bool eventFilter(QObject *watched, QEvent *event) override;

protected:
    bool event(QEvent *event) override;
    void mousePressEvent(QMouseEvent *event) override;
    void wheelEvent(QWheelEvent *event) override;
    void paintEvent(QPaintEvent *event) override;

private:
    [[nodiscard]] QRect face() const;
    [[nodiscard]] MetalPopupButtonState state() const;
    [[nodiscard]] QPalette listPalette() const;
    void setListShown(bool isShown);

    SkinEnvironment m_environment;
    ActivationFlag m_isMainWindow;
    std::optional<AppearanceName> m_appearance;
    bool m_isListShown = false;
    MetalPopupButtonCell m_cell;
    FaceCache<MetalPopupButtonState> m_faces;
};

} // namespace tunedeck
