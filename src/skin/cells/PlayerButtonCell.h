// SPDX-License-Identifier: MIT
#pragma once

#include "skin/cells/PlayerButtonTypes.h"

#include <QPointF>
#include <QRectF>

class QPainter;
class QPainterPath;

namespace tunedeck {

class Gradient;

/// What the looks of a round button of the transport depend on.
struct PlayerButtonState {
    PlayerButtonTypes controlGlyph = PlayerButtonTypes::forward;
    bool isPressed = false;
    bool isEnabled = true;
    bool isDark = false;
    bool isGraphite = false;

    bool operator==(const PlayerButtonState &) const = default;
};

/// Draws the round, glossy buttons of the transport.
class RoundButtonCell {
public:
    /// Draws into `frame`, in points and with y upwards. The glyph and the glare do not follow the frame's size.
    void draw(QPainter &painter, const QRectF &frame, const PlayerButtonState &state) const;

protected:
    /// What tells one cell from the other. Points are the button's own, from its lower left corner.
    struct Measures {
        float bezelAlpha = 0;
        /// The glare is half a disc around (`center`, `center`), whose quarters have control points that lie `control`
        /// away from its axes, and whose upper edge swings through `wave`.
        double center = 0;
        double radius = 0;
        double control = 0;
        QPointF wave;
        bool isGlyphFaintWhenDisabled = false;
        PlayerButtonTypes firstGlyph = PlayerButtonTypes::pause;
        PlayerButtonTypes lastGlyph = PlayerButtonTypes::pause;
    };

    explicit RoundButtonCell(const Measures &measures);

private:
    void drawGlare(QPainter &painter, const Gradient &gradient) const;
    void drawGlyph(QPainter &painter, const PlayerButtonState &state) const;
    [[nodiscard]] QPainterPath glarePath() const;

    Measures m_measures;
};

/// The button that plays and pauses, 35 points wide and high. Draws pause, play and stop.
class PlayerButtonCell : public RoundButtonCell {
public:
    PlayerButtonCell();
};

/// The buttons that skip and seek, 25 points wide and high. Draws backward and forward.
class TunedeckPlayerButtonCell : public RoundButtonCell {
public:
    TunedeckPlayerButtonCell();
};

} // namespace tunedeck
