// SPDX-License-Identifier: MIT
#include "GlyphButton.h"

#include "FatalError.h"

#include <QLinearGradient>
#include <QPainter>
#include <QPainterPath>
#include <QPainterPathStroker>

#include <initializer_list>

namespace tunedeck {

namespace {
/// How much of the button's width the glyph takes.
constexpr qreal glyphPart = 0.42;
constexpr qreal faceLessGlyphPart = 0.8;

QPainterPath polygon(std::initializer_list<QPointF> points)
{
    QPainterPath path;
    path.addPolygon(QPolygonF(QList<QPointF>(points)));
    path.closeSubpath();
    return path;
}

QPainterPath stroked(const QPainterPath &line, qreal width)
{
    QPainterPathStroker stroker;
    stroker.setWidth(width);
    stroker.setCapStyle(Qt::RoundCap);
    return stroker.createStroke(line);
}

QPainterPath bar(QPointF from, QPointF to)
{
    QPainterPath line(from);
    line.lineTo(to);
    return stroked(line, 0.36);
}

QPainterPath doubleArrow(qreal direction)
{
    const qreal d = direction;
    return polygon({{-d, -0.8}, {0, 0}, {-d, 0.8}}) + polygon({{0, -0.8}, {d, 0}, {0, 0.8}});
}

QPainterPath speaker()
{
    return polygon({{-0.9, -0.35}, {-0.5, -0.35}, {0.05, -0.85}, {0.05, 0.85}, {-0.5, 0.35}, {-0.9, 0.35}});
}

QPainterPath soundWave(qreal radius)
{
    const QRectF circle(-0.15 - radius, -radius, radius * 2, radius * 2);
    QPainterPath arc;
    arc.arcMoveTo(circle, 45);
    arc.arcTo(circle, 45, -90);
    return stroked(arc, 0.16);
}

/// In a square from (-1, -1) to (1, 1).
QPainterPath pathOf(GlyphButton::Glyph glyph)
{
    switch (glyph) {
    case GlyphButton::Glyph::None:
        return {};
    case GlyphButton::Glyph::Pause:
        return polygon({{-0.75, -0.95}, {-0.2, -0.95}, {-0.2, 0.95}, {-0.75, 0.95}})
            + polygon({{0.2, -0.95}, {0.75, -0.95}, {0.75, 0.95}, {0.2, 0.95}});
    case GlyphButton::Glyph::Play:
        return polygon({{-0.65, -0.95}, {1, 0}, {-0.65, 0.95}});
    case GlyphButton::Glyph::Stop:
        return polygon({{-0.8, -0.8}, {0.8, -0.8}, {0.8, 0.8}, {-0.8, 0.8}});
    case GlyphButton::Glyph::Backward:
        return doubleArrow(-1);
    case GlyphButton::Glyph::Forward:
        return doubleArrow(1);
    case GlyphButton::Glyph::Close:
        return bar({-0.65, -0.65}, {0.65, 0.65}).united(bar({-0.65, 0.65}, {0.65, -0.65}));
    case GlyphButton::Glyph::Minimize:
        return bar({-0.8, 0}, {0.8, 0});
    case GlyphButton::Glyph::Maximize:
        return bar({-0.8, 0}, {0.8, 0}).united(bar({0, -0.8}, {0, 0.8}));
    case GlyphButton::Glyph::Quiet:
        return speaker();
    case GlyphButton::Glyph::Loud:
        return speaker() + soundWave(0.6) + soundWave(1);
    }
    fatalError("Impossible glyph");
}
} // namespace

GlyphButton::GlyphButton(Glyph glyph, Face face, QWidget *parent)
    : HoldableButton(parent)
    , m_glyph(glyph)
    , m_face(face)
{
}

GlyphButton::Glyph GlyphButton::controlGlyph() const
{
    return m_glyph;
}

void GlyphButton::setControlGlyph(Glyph glyph)
{
    if (m_glyph == glyph) {
        return;
    }
    m_glyph = glyph;
    update();
}

void GlyphButton::setDrawsFocusRing(bool drawsFocusRing)
{
    if (m_drawsFocusRing == drawsFocusRing) {
        return;
    }
    m_drawsFocusRing = drawsFocusRing;
    update();
}

void GlyphButton::paintEvent(QPaintEvent *)
{
    QPainter painter(this);
    painter.setRenderHint(QPainter::Antialiasing);
    if (!isEnabled()) {
        painter.setOpacity(0.45);
    }
    if (m_face == Face::Round) {
        paintFace(painter);
    }
    paintLabel(painter);
}

void GlyphButton::paintFace(QPainter &painter) const
{
    const QColor color = palette().color(QPalette::Button).darker(isDown() ? 125 : 100);
    const QRectF outline = QRectF(rect()).adjusted(0.5, 0.5, -0.5, -0.5);
    QLinearGradient face(outline.topLeft(), outline.bottomLeft());
    face.setColorAt(0, color.lighter(108));
    face.setColorAt(1, color.darker(108));
    const bool showsFocus = m_drawsFocusRing && hasFocus();
    painter.setPen(showsFocus ? QPen(palette().color(QPalette::Highlight), 2) : QPen(color.darker(190), 1));
    painter.setBrush(face);
    painter.drawEllipse(showsFocus ? outline.adjusted(0.5, 0.5, -0.5, -0.5) : outline);
}

void GlyphButton::paintLabel(QPainter &painter) const
{
    const bool showsFocus = m_face == Face::None && m_drawsFocusRing && hasFocus();
    const QColor color = palette().color(showsFocus ? QPalette::Highlight : QPalette::ButtonText);
    if (!text().isEmpty()) {
        painter.setPen(color);
        painter.drawText(rect(), Qt::AlignCenter, text());
        return;
    }
    const qreal scale = width() * (m_face == Face::Round ? glyphPart : faceLessGlyphPart) / 2;
    painter.translate(width() / 2.0, height() / 2.0);
    painter.scale(scale, scale);
    painter.fillPath(pathOf(m_glyph), isDown() && m_face == Face::None ? color.darker(150) : color);
}

} // namespace tunedeck
