// SPDX-License-Identifier: MIT
#pragma once

#include "skin/cells/LCDBackgroundCell.h"
#include "skin/drawing/FaceCache.h"
#include "skin/looks/ActivationFlag.h"
#include "skin/looks/LooksLog.h"
#include "skin/looks/SkinEnvironment.h"

#include <QWidget>

namespace tunedeck {

/// The panel behind the display's texts and its progress slider. Each paint logs the looks of the skin if they are new.
class LCDBackgroundView : public QWidget {
    Q_OBJECT

public:
    explicit LCDBackgroundView(const SkinEnvironment &environment, QWidget *parent = nullptr);

    [[nodiscard]] bool isMainWindow() const { return m_isMainWindow.isSet(); }

protected:
    void paintEvent(QPaintEvent *event) override;

private:
    SkinEnvironment m_environment;
    ActivationFlag m_isMainWindow;
    LCDBackgroundCell m_cell;
    FaceCache<LCDBackgroundState> m_faces;
    LooksLog m_looksLog;
};

} // namespace tunedeck
