// SPDX-License-Identifier: MIT
#pragma once

#include "skin/cells/PlayerButtonTypes.h"

#include <QPointF>
#include <QRectF>

class QPainter;
class QPainterPath;

namespace tunedeck {

class Gradient;

/// The state that the look of a round transport button depends on.
struct PlayerButtonState {
    PlayerButtonTypes controlGlyph = PlayerButtonTypes::forward;
    bool isPressed = false;
    bool isEnabled = true;
    bool isDark = false;
    bool isGraphite = false;

    bool operator==(const PlayerButtonState &) const = default;
};

/// The painter of the round, glossy transport buttons. A cell keeps no state of the control it paints; a view passes
/// it.
class RoundButtonCell {
public:
    /// Draws into `frame`, in points and with y upwards. The glyph and the glare do not follow the frame's size.
    void draw(QPainter &painter, const QRectF &frame, const PlayerButtonState &state) const;

protected:
    /// The differences between the two cells, in points from the button's lower left corner.
    struct Measures {
        float bezelAlpha = 0;
        /// The glare is half a disc around (`center`, `center`), whose quarters have control points that are `control`
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
