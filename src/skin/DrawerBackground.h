// SPDX-License-Identifier: MIT
#pragma once

#include "ActivationFlag.h"
#include "DrawerBackgroundCell.h"
#include "FaceCache.h"
#include "SkinEnvironment.h"

#include <QWidget>

namespace tunedeck {

/// The metal of the drawer, along the view's lower edge. It is the darker while a window of the program is main or the
/// main window is kept above all others; the latter is asked when the view is resized and when the former changes.
class DrawerBackground : public QWidget {
    Q_OBJECT

public:
    explicit DrawerBackground(const SkinEnvironment &environment, QWidget *parent = nullptr);

    [[nodiscard]] bool isMainWindow() const;

protected:
    void paintEvent(QPaintEvent *event) override;
    void resizeEvent(QResizeEvent *event) override;

private:
    void layOut();

    SkinEnvironment m_environment;
    ActivationFlag m_isMainWindow;
    DrawerBackgroundState m_state;
    DrawerBackgroundCell m_cell;
    FaceCache<DrawerBackgroundState> m_faces;
};

} // namespace tunedeck
