// SPDX-License-Identifier: MIT
#pragma once

#include "platform/UserDefaults.h"
#include "skin/cells/MetalGroundState.h"
#include "skin/drawing/FaceCache.h"
#include "skin/drawing/flipY.h"
#include "skin/looks/ActivationFlag.h"
#include "skin/looks/SkinEnvironment.h"

#include <QPainter>
#include <QWidget>

namespace tunedeck {

/// Metal along the view's lower edge, painted by `Cell`. It is darker while a window of the program is main or while
/// the main window stays on top.
template <typename Cell> class MetalGround : public QWidget {
public:
    explicit MetalGround(const SkinEnvironment &environment, QWidget *parent = nullptr)
        : QWidget(parent)
        , m_environment(environment)
        , m_isMainWindow(environment.windowActivation, ActivationFlag::Status::Main)
    {
        connect(&m_isMainWindow, &ActivationFlag::changed, this, [this] { layOut(); });
        connect(&environment.defaults, &UserDefaults::valueChanged, this, [this](const QString &key) {
            if (key == SettingsKey::keepMainWindowAboveAllOtherWindows) {
                layOut();
            }
        });
    }

    [[nodiscard]] bool isMainWindow() const { return m_isMainWindow.isSet(); }

protected:
    void paintEvent(QPaintEvent *) override
    {
        const QRect metal(0, height() - Cell::height, width(), Cell::height);
        QPainter painter(this);
        m_faces.draw(painter, metal, m_state, [this](QPainter &face) {
            flipY(face, Cell::height);
            m_cell.draw(face, QRectF(0, 0, width(), Cell::height), m_state);
        });
    }

    void resizeEvent(QResizeEvent *) override { layOut(); }

private:
    void layOut()
    {
        m_state = {.isMainWindow = isMainWindow(),
            .isKeptAboveAllOthers = m_environment.defaults.boolForKey(SettingsKey::keepMainWindowAboveAllOtherWindows)};
        update();
    }

    SkinEnvironment m_environment;
    ActivationFlag m_isMainWindow;
    MetalGroundState m_state;
    Cell m_cell;
    FaceCache<MetalGroundState> m_faces;
};

} // namespace tunedeck
