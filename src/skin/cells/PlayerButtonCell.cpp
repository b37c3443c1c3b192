// SPDX-License-Identifier: MIT
#include "skin/cells/PlayerButtonCell.h"

#include "skin/drawing/DevicePixels.h"
#include "skin/drawing/Gradient.h"
#include "skin/drawing/Ink.h"
#include "skin/drawing/Shapes.h"
#include "skin/drawing/bezelGradient.h"

#include <QPainter>
#include <QPainterPath>
#include <QPolygonF>

#include <numbers>

namespace tunedeck {

namespace {
/// In radians: 28 degrees, counter-clockwise.
constexpr double glareTilt = 0.4886921905584123;
constexpr double glareAngle = -118;

Gradient pressedFace(bool graphite)
{
    return graphite
        ? Gradient{{QColor::fromRgbF(0.65F, 0.69F, 0.73F), 0.25}, {QColor::fromRgbF(0.84F, 0.87F, 0.9F), 0.9}}
        : Gradient{{QColor::fromRgbF(0.55F, 0.72F, 0.9F), 0.25}, {QColor::fromRgbF(0.74F, 0.88F, 0.96F), 0.9}};
}

Gradient pressedGlare(bool graphite)
{
    const QColor lit = graphite ? QColor::fromRgbF(0.92F, 0.96F, 0.99F) : QColor::fromRgbF(0.71F, 0.92F, 0.98F);
    return {{accentColor(graphite), 0}, {lit, 1}};
}

Gradient face(const PlayerButtonState &state)
{
    return state.isPressed ? pressedFace(state.isGraphite) : Gradient{{grey(0.94F), 0}, {grey(0.99F), 1}};
}

Gradient glare(const PlayerButtonState &state)
{
    return state.isPressed ? pressedGlare(state.isGraphite) : Gradient{{black(0.1F), 0}, {black(0.025F), 1}};
}

enum class Pointing { Left, Right };

void addTriangle(QPainterPath &path, const QRectF &square, Pointing pointing)
{
    const bool pointsRight = pointing == Pointing::Right;
    const double base = pointsRight ? square.left() : square.right();
    const double tip = pointsRight ? square.right() : square.left();
    path.addPolygon(QPolygonF({{base, square.top()}, {base, square.bottom()}, {tip, square.center().y()}}));
    path.closeSubpath();
}

QPainterPath glyphPath(PlayerButtonTypes glyph, const DevicePixels &pixels)
{
    QPainterPath path;
    path.setFillRule(Qt::WindingFill);
    switch (glyph) {
    case PlayerButtonTypes::pause:
        path.addRect(pixels.snapped({11, 11, 5, 13}));
        path.addRect(pixels.snapped({19, 11, 5, 13}));
        break;
    case PlayerButtonTypes::play:
        addTriangle(path, QRectF(12, 10, 15, 15), Pointing::Right);
        break;
    case PlayerButtonTypes::stop:
        path.addRect(pixels.snapped({11, 11, 13, 13}));
        break;
    case PlayerButtonTypes::backward:
        addTriangle(path, QRectF(5, 9, 7, 7), Pointing::Left);
        addTriangle(path, QRectF(11, 9, 7, 7), Pointing::Left);
        break;
    case PlayerButtonTypes::forward:
        addTriangle(path, QRectF(7, 9, 7, 7), Pointing::Right);
        addTriangle(path, QRectF(13, 9, 7, 7), Pointing::Right);
        break;
    case PlayerButtonTypes::reserved5:
    case PlayerButtonTypes::reserved6:
    case PlayerButtonTypes::reserved7:
        break;
    }
    return path;
}
} // namespace

RoundButtonCell::RoundButtonCell(const Measures &measures)
    : m_measures(measures)
{
}

void RoundButtonCell::draw(QPainter &painter, const QRectF &frame, const PlayerButtonState &state) const
{
    painter.save();
    painter.setRenderHint(QPainter::Antialiasing);
    const Gradient bezel = bezelGradient(m_measures.bezelAlpha, state.isDark, painter.device()->devicePixelRatioF());
    bezel.drawInPath(painter, oval(frame), flippedDownwards);
    const Gradient ring{{black(0.42F), 0}, {black(0.25F), 1}};
    ring.drawInPath(painter, oval(inset(frame, 1, 1)), QPointF(0, 0));
    face(state).drawInPath(painter, oval(inset(frame, 2, 2)), flippedDownwards);
    // On a pressed face the glare is under the glyph; otherwise it shades the glyph, too.
    if (state.isPressed) {
        drawGlare(painter, glare(state));
        drawGlyph(painter, state);
    } else {
        drawGlyph(painter, state);
        drawGlare(painter, glare(state));
    }
    painter.restore();
}

void RoundButtonCell::drawGlare(QPainter &painter, const Gradient &gradient) const
{
    painter.save();
    painter.translate(m_measures.center, m_measures.center);
    painter.rotate(glareTilt * 180 / std::numbers::pi);
    gradient.drawInPath(painter, glarePath(), glareAngle);
    painter.restore();
}

void RoundButtonCell::drawGlyph(QPainter &painter, const PlayerButtonState &state) const
{
    if (state.controlGlyph < m_measures.firstGlyph || state.controlGlyph > m_measures.lastGlyph) {
        return;
    }
    const bool isFaint = m_measures.isGlyphFaintWhenDisabled && !state.isEnabled && !state.isPressed;
    const QPainterPath glyph = glyphPath(state.controlGlyph, DevicePixels(painter));
    painter.fillPath(glyph, grey(state.isPressed ? 0.27F : 0.33F, isFaint ? 0.333F : 1));
}

QPainterPath RoundButtonCell::glarePath() const
{
    const double r = m_measures.radius;
    const double k = m_measures.control;
    const QPointF wave = m_measures.wave;
    QPainterPath path;
    path.setFillRule(Qt::WindingFill);
    path.moveTo(r, 0);
    path.cubicTo({r, -k}, {k, -r}, {0, -r});
    path.cubicTo({-k, -r}, {-r, -k}, {-r, 0});
    path.closeSubpath();
    // The wave adds to the half disc on the left, where it turns the same way, and takes from it on the right.
    path.moveTo(-r, 0);
    path.cubicTo({-r, 0}, {-wave.x(), wave.y()}, {0, 0});
    path.cubicTo({wave.x(), -wave.y()}, {r, 0}, {r, 0});
    path.closeSubpath();
    return withFineCurves(path);
}

PlayerButtonCell::PlayerButtonCell()
    : RoundButtonCell({.bezelAlpha = 0.25F,
          .center = 17.5,
          .radius = 15.5,
          .control = 8.56,
          .wave = {9.72, 5.5},
          .isGlyphFaintWhenDisabled = false,
          .firstGlyph = PlayerButtonTypes::pause,
          .lastGlyph = PlayerButtonTypes::stop})
{
}

TunedeckPlayerButtonCell::TunedeckPlayerButtonCell()
    : RoundButtonCell({.bezelAlpha = 0.3F,
          .center = 12.5,
          .radius = 10.5,
          .control = 5.8,
          .wave = {5.54, 2.8},
          .isGlyphFaintWhenDisabled = true,
          .firstGlyph = PlayerButtonTypes::backward,
          .lastGlyph = PlayerButtonTypes::forward})
{
}

} // namespace tunedeck
