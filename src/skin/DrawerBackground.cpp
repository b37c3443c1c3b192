// SPDX-License-Identifier: MIT
#include "DrawerBackground.h"

#include "UserDefaults.h"
#include "turnUpwards.h"

#include <QPainter>

namespace tunedeck {

DrawerBackground::DrawerBackground(const SkinEnvironment &environment, QWidget *parent)
    : QWidget(parent)
    , m_environment(environment)
    , m_isMainWindow(environment.windowActivation, ActivationFlag::Status::Main)
{
    connect(&m_isMainWindow, &ActivationFlag::changed, this, &DrawerBackground::layOut);
}

bool DrawerBackground::isMainWindow() const
{
    return m_isMainWindow.isSet();
}

void DrawerBackground::paintEvent(QPaintEvent *)
{
    constexpr int height = DrawerBackgroundCell::height;
    const QRect metal(0, this->height() - height, width(), height);
    QPainter painter(this);
    m_faces.draw(painter, metal, m_state, [this](QPainter &face) {
        turnUpwards(face, height);
        m_cell.draw(face, QRectF(0, 0, width(), height), m_state);
    });
}

void DrawerBackground::resizeEvent(QResizeEvent *)
{
    layOut();
}

void DrawerBackground::layOut()
{
    m_state = {.isMainWindow = isMainWindow(),
        .isKeptAboveAllOthers = m_environment.defaults.boolForKey(SettingsKey::keepMainWindowAboveAllOtherWindows)};
    update();
}

} // namespace tunedeck
