// SPDX-License-Identifier: MIT
#pragma once

#include "HoldableButton.h"

namespace tunedeck {

/// A small push button that shows a glyph, or its text where it has one, on a round face or on none. Its colours are
/// the palette's Button and ButtonText.
class GlyphButton : public HoldableButton {
    Q_OBJECT

public:
    enum class Glyph { None, Pause, Play, Stop, Backward, Forward, Close, Minimize, Maximize, Quiet, Loud };
    enum class Face { None, Round };

    GlyphButton(Glyph glyph, Face face, QWidget *parent = nullptr);

    [[nodiscard]] Glyph controlGlyph() const;
    void setControlGlyph(Glyph glyph);
    void setDrawsFocusRing(bool drawsFocusRing);

protected:
    void paintEvent(QPaintEvent *event) override;

private:
    void paintFace(QPainter &painter) const;
    void paintLabel(QPainter &painter) const;

    Glyph m_glyph;
    Face m_face;
    bool m_drawsFocusRing = true;
};

} // namespace tunedeck
