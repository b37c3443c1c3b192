// SPDX-License-Identifier: MIT
#include "skin/cells/WindowControlButtonCell.h"

#include "platform/FatalError.h"
#include "skin/drawing/Gradient.h"
#include "skin/drawing/Ink.h"
#include "skin/drawing/Shapes.h"

#include <QPainter>
#include <QPainterPath>
#include <QPainterPathStroker>

namespace tunedeck {

namespace {
struct Highlight {
    QColor color;
    float endAlpha = 0;
    double endLocation = 0;
};

struct Symbol {
    QColor color;
    float alpha = 0;
    float pressedAlpha = 0;
};

/// The colours of one style.
struct Gem {
    QColor body;
    Highlight highlight;
    float glareAlpha = 1;
    Symbol symbol;
};

Gem gemOf(WindowControlButtonStyle style)
{
    switch (style) {
    case WindowControlButtonStyle::close:
        return {{200, 10, 10}, {{241, 200, 191}, 0.1F, 0.6}, 0.96F, {{109, 41, 32}, 0.85F, 0.95F}};
    case WindowControlButtonStyle::minimize:
        return {{209, 123, 52}, {{255, 246, 180}, 0, 0.7}, 1, {{113, 69, 41}, 0.8F, 0.95F}};
    case WindowControlButtonStyle::maximize:
        return {{74, 132, 14}, {{234, 244, 182}, 0.1F, 0.7}, 1, {{54, 85, 37}, 0.75F, 0.85F}};
    }
    fatalError("Impossible style of a window's button");
}

Gem gemOf(const WindowControlButtonState &state)
{
    Gem gem = gemOf(state.controlStyle);
    if (state.isGraphite) {
        gem.body = {121, 132, 150};
        gem.highlight = {{233, 244, 255}, 0, 0.6};
        gem.symbol = {Qt::black, 0.47F, 0.47F};
    }
    return gem;
}

void drawRim(QPainter &painter, const QRectF &frame, bool dark)
{
    const Gradient rim =
        dark ? Gradient{{black(0.42F), 0}, {white(0.15F), 1}} : Gradient{{white(0), 0.667}, {white(0.55F), 1}};
    rim.drawInPath(painter, oval(frame), flippedDownwards);
}

void drawHighlight(QPainter &painter, const QRectF &frame, const Highlight &highlight)
{
    const Gradient gradient{
        {highlight.color, 0}, {withAlpha(highlight.color, highlight.endAlpha), highlight.endLocation}};
    gradient.drawInPath(painter, oval(inset(frame, 0.75, 0.75)), QPointF(0, -0.85));
}

void drawGlare(QPainter &painter, const QRectF &frame, float alpha, bool pressed)
{
    const Gradient glare{{white(alpha), 0}, {white(0), 0.5}};
    const QRectF bounds = inset(frame, 2.15, pressed ? 1.75 : 1.5).translated(0, -0.667);
    glare.drawInPath(painter, oval(bounds), QPointF(0, 1));
}

QPainterPath symbolPath(WindowControlButtonStyle style)
{
    QPainterPath path;
    const auto addLine = [&path](QPointF from, QPointF to) {
        path.moveTo(from);
        path.lineTo(to);
    };
    switch (style) {
    case WindowControlButtonStyle::close:
        addLine({5, 5}, {9, 9});
        addLine({9, 5}, {5, 9});
        break;
    case WindowControlButtonStyle::minimize:
        addLine({4.5, 7}, {9.5, 7});
        break;
    case WindowControlButtonStyle::maximize:
        addLine({4.5, 7}, {9.5, 7});
        addLine({7, 4.5}, {7, 9.5});
        break;
    }
    return path;
}

void drawSymbol(QPainter &painter, const Symbol &symbol, const WindowControlButtonState &state)
{
    QPainterPathStroker stroker;
    stroker.setWidth(painter.device()->devicePixelRatioF() > 1 ? 1.5 : 2);
    stroker.setCapStyle(Qt::RoundCap);
    // One outline for all lines: the ink of their edges must not add up at a crossing.
    const QPainterPath lines = withFineCurves(stroker.createStroke(symbolPath(state.controlStyle))).simplified();
    painter.fillPath(lines, withAlpha(symbol.color, state.isPressed ? symbol.pressedAlpha : symbol.alpha));
}
} // namespace

void WindowControlButtonCell::draw(QPainter &painter, const QRectF &frame, const WindowControlButtonState &state) const
{
    const Gem gem = gemOf(state);
    const QRectF bodyFrame = inset(frame, 1, 1);
    painter.save();
    painter.setRenderHint(QPainter::Antialiasing);
    drawRim(painter, frame, state.isDark);
    painter.fillPath(capsule(bodyFrame), gem.body);
    if (state.isPressed) {
        painter.fillPath(oval(bodyFrame), black(0.275F));
    }
    drawHighlight(painter, frame, gem.highlight);
    fillWithInnerShadow(painter, capsule(bodyFrame), m_innerShadow);
    fillWithInnerShadow(painter, capsule(bodyFrame), m_lowerInnerShadow);
    drawGlare(painter, frame, gem.glareAlpha, state.isPressed);
    if (state.isHovered) {
        drawSymbol(painter, gem.symbol, state);
    }
    painter.restore();
}

} // namespace tunedeck
