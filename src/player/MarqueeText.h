// SPDX-License-Identifier: MIT
#pragma once

#include <QFont>
#include <QPixmap>
#include <QRect>
#include <QString>

namespace tunedeck {

enum class MarqueeInk {
    Dark,
    Light, ///< of the dark appearance
    Full ///< of a user who wants high contrast
};

/// The picture of one line of text on the display's glass: dark ink with a lit lip below it, or light ink with a dark
/// halo, on a transparent ground.
///
/// The caller owns the scale: a picture is for one scale and is made again for another. The text begins `overhang`
/// points from the picture's left edge; the picture is as high as asked for, and the text is halfway down.
///
/// The text is drawn as it is given; the length and the characters are the caller's to bound, with oneLine(). An empty
/// text gives an empty picture of twice the overhang. A height or scale that is not positive gives a null picture.
class MarqueeText {
public:
    /// Room, in points, on either side of a text. Its first and last glyph may reach beyond their advance.
    static constexpr double overhang = 8;

    /// A null picture, of scale 0.
    MarqueeText() = default;
    /// `height` is in points, `scale` in device pixels to the point. `font` is resolved for the paint device that
    /// shows the text.
    MarqueeText(const QString &text, const QFont &font, double height, double scale, MarqueeInk ink);

    /// `string` as one line of at most 1,000 characters and 8,000 points. A longer text ends with an ellipsis; control
    /// characters and line breaks become spaces.
    [[nodiscard]] static QString oneLine(const QString &string, const QFont &font);
    /// The advance of `text` in points, trailing spaces included.
    [[nodiscard]] static double width(const QString &text, const QFont &font);
    /// `text` cut to `width` points. A cut text ends with an ellipsis.
    [[nodiscard]] static QString elided(const QString &text, const QFont &font, double width);

    /// The picture's device pixel ratio is the scale.
    [[nodiscard]] const QPixmap &picture() const { return m_picture; }
    [[nodiscard]] double scale() const { return m_picture.isNull() ? 0 : m_picture.devicePixelRatio(); }
    /// The part of the picture that is not empty, over its whole width, in device pixels.
    [[nodiscard]] const QRect &inkedRows() const { return m_inkedRows; }

private:
    QPixmap m_picture;
    QRect m_inkedRows;
};

} // namespace tunedeck
