// SPDX-License-Identifier: MIT
#pragma once

#include "skin/cells/PlayerButtonCell.h"
#include "skin/drawing/FaceCache.h"
#include "skin/drawing/Shapes.h"
#include "skin/drawing/flipY.h"
#include "skin/looks/ActivationFlag.h"
#include "skin/looks/FocusLamp.h"
#include "skin/looks/skinLooks.h"

#include <QMouseEvent>
#include <QPainter>
#include <QWidget>

namespace tunedeck {

/// The common base of the round transport buttons. `Button` handles presses, `Cell` paints.
template <typename Button, typename Cell> class RoundButton : public Button {
public:
    explicit RoundButton(const SkinEnvironment &environment, QWidget *parent = nullptr)
        : Button(parent)
        , m_environment(environment)
        , m_isMainWindow(environment.windowActivation, ActivationFlag::Status::Main)
    {
        QObject::connect(&m_isMainWindow, &ActivationFlag::changed, this, qOverload<>(&QWidget::update));
        repaintOnNewLooks(*this, environment);
        new FocusLamp(*this, environment);
    }

    [[nodiscard]] bool isMainWindow() const { return m_isMainWindow.isSet(); }
    /// Forward at first.
    [[nodiscard]] PlayerButtonTypes controlGlyph() const { return m_controlGlyph; }
    void setControlGlyph(PlayerButtonTypes glyph)
    {
        if (m_controlGlyph == glyph) {
            return;
        }
        m_controlGlyph = glyph;
        this->update();
    }

protected:
    bool hitButton(const QPoint &position) const override { return oval(inset(this->rect(), 1, 1)).contains(position); }

    void mousePressEvent(QMouseEvent *event) override
    {
        // A press on a corner does nothing and does not drag the window either.
        if (hitButton(event->position().toPoint())) {
            Button::mousePressEvent(event);
        }
    }

    void paintEvent(QPaintEvent *) override
    {
        const PlayerButtonState state = this->state();
        QPainter painter(this);
        m_faces.draw(painter, this->rect(), state, [this, &state](QPainter &face) {
            flipY(face, this->height());
            m_cell.draw(face, this->rect(), state);
        });
    }

private:
    [[nodiscard]] PlayerButtonState state() const
    {
        return {.controlGlyph = m_controlGlyph,
            .isPressed = this->isDown(),
            .isEnabled = this->isEnabled(),
            .isDark = isDark(m_environment),
            .isGraphite = isGraphite(m_environment)};
    }

    SkinEnvironment m_environment;
    ActivationFlag m_isMainWindow;
    Cell m_cell;
    FaceCache<PlayerButtonState> m_faces;
    PlayerButtonTypes m_controlGlyph = PlayerButtonTypes::forward;
};

} // namespace tunedeck
