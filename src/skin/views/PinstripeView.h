// SPDX-License-Identifier: MIT
#pragma once

#include "skin/cells/PinstripeCell.h"
#include "skin/looks/ActivationFlag.h"
#include "skin/looks/SkinEnvironment.h"

#include <QWidget>

namespace tunedeck {

/// Faint stripes over a window while a window of the program is key.
class PinstripeView : public QWidget {
    Q_OBJECT
    Q_PROPERTY(bool drawsPinstripes READ drawsPinstripes WRITE setDrawsPinstripes NOTIFY drawsPinstripesChanged)

public:
    explicit PinstripeView(const SkinEnvironment &environment, QWidget *parent = nullptr);

    [[nodiscard]] bool isKeyWindow() const { return m_isKeyWindow.isSet(); }
    /// True at first.
    [[nodiscard]] bool drawsPinstripes() const { return m_drawsPinstripes; }
    void setDrawsPinstripes(bool drawsPinstripes);

Q_SIGNALS:
    /// Only on a real change.
    void drawsPinstripesChanged(bool drawsPinstripes);

protected:
    void paintEvent(QPaintEvent *event) override;

private:
    SkinEnvironment m_environment;
    ActivationFlag m_isKeyWindow;
    PinstripeCell m_cell;
    bool m_drawsPinstripes = true;
};

} // namespace tunedeck
