// SPDX-License-Identifier: MIT
#pragma once

#include "skin/cells/ShadowViewCell.h"
#include "skin/drawing/FaceCache.h"
#include "skin/looks/ActivationFlag.h"
#include "skin/looks/SkinEnvironment.h"

#include <QWidget>

#include <variant>

namespace tunedeck {

/// The soft shadow of the player on the drawer. The strip that casts it, from 30 to 15 points above the view's lower
/// edge, is never painted: the player covers it. The view lets the mouse through.
class ShadowView : public QWidget {
    Q_OBJECT

public:
    explicit ShadowView(const SkinEnvironment &environment, QWidget *parent = nullptr);

    [[nodiscard]] bool isMainWindow() const { return m_isMainWindow.isSet(); }

protected:
    void paintEvent(QPaintEvent *event) override;

private:
    ActivationFlag m_isMainWindow;
    ShadowViewCell m_cell;
    FaceCache<std::monostate> m_faces;
};

} // namespace tunedeck
