// SPDX-License-Identifier: MIT
#include "WindowBackground.h"

#include "UserDefaults.h"
#include "turnUpwards.h"

#include <QPainter>

namespace tunedeck {

WindowBackground::WindowBackground(const SkinEnvironment &environment, QWidget *parent)
    : QWidget(parent)
    , m_environment(environment)
    , m_isMainWindow(environment.windowActivation, ActivationFlag::Status::Main)
{
    connect(&m_isMainWindow, &ActivationFlag::changed, this, &WindowBackground::layOut);
}

bool WindowBackground::isMainWindow() const
{
    return m_isMainWindow.isSet();
}

void WindowBackground::paintEvent(QPaintEvent *)
{
    constexpr int height = WindowBackgroundCell::height;
    const QRect metal(0, this->height() - height, width(), height);
    QPainter painter(this);
    m_faces.draw(painter, metal, m_state, [this](QPainter &face) {
        turnUpwards(face, height);
        m_cell.draw(face, QRectF(0, 0, width(), height), m_state);
    });
}

void WindowBackground::resizeEvent(QResizeEvent *)
{
    layOut();
}

void WindowBackground::layOut()
{
    m_state = {.isMainWindow = isMainWindow(),
        .isKeptAboveAllOthers = m_environment.defaults.boolForKey(SettingsKey::keepMainWindowAboveAllOtherWindows)};
    update();
}

} // namespace tunedeck
