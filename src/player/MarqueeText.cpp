// SPDX-License-Identifier: MIT
#include "player/MarqueeText.h"

#include "skin/drawing/LCDTextColor.h"

#include <QFontMetricsF>
#include <QImage>
#include <QPainter>

#include <algorithm>
#include <array>
#include <cmath>
#include <span>

namespace tunedeck {

namespace {
constexpr QColor lightLcdTextColor(255, 255, 255, 191);
/// Dark ink is engraved in the glass, light ink glows on it: a lit lip below, or a dark halo without which nobody could
/// read it. In device pixels.
constexpr std::array lipOffsets{QPoint(0, 1)};
constexpr double lipOpacity = 0.55;
constexpr std::array haloOffsets{QPoint(-1, -1), QPoint(1, -1), QPoint(-1, 1), QPoint(1, 1), QPoint(0, 2)};
constexpr double haloOpacity = 0.5;
constexpr qsizetype mostCharacters = 1000;
/// At three device pixels to the point, 24,000 pixels: every paint engine can hold as much.
constexpr double mostPoints = 8000;

bool breaksTheLine(QChar character)
{
    const QChar::Category category = character.category();
    return category == QChar::Other_Control || category == QChar::Separator_Line
        || category == QChar::Separator_Paragraph;
}

bool isEmptyRow(const QImage &image, int y)
{
    const auto *row = reinterpret_cast<const QRgb *>(image.constScanLine(y));
    return std::all_of(row, row + image.width(), [](QRgb pixel) { return pixel == 0; });
}

/// The rows from the first that is not empty to the last.
QRect rowsWithInk(const QImage &image)
{
    QRect rows = image.rect();
    while (!rows.isEmpty() && isEmptyRow(image, rows.top())) {
        rows.setTop(rows.top() + 1);
    }
    while (!rows.isEmpty() && isEmptyRow(image, rows.bottom())) {
        rows.setBottom(rows.bottom() - 1);
    }
    return rows;
}

QImage transparentImage(QSize size)
{
    QImage image(size, QImage::Format_ARGB32_Premultiplied);
    image.fill(Qt::transparent);
    return image;
}

/// The text in opaque ink, written into `image`.
void write(QImage &image, const QString &text, const QFont &font, double height, const QColor &ink)
{
    const double scale = image.devicePixelRatio();
    const QFontMetricsF metrics(font);
    const double baseline = (height - metrics.ascent() - metrics.descent()) / 2 + metrics.ascent();
    QPainter painter(&image);
    painter.setFont(font);
    painter.setPen(QColor(ink.rgb()));
    painter.drawText(QPointF(MarqueeText::overhang, std::round(baseline * scale) / scale), text);
}

/// The text with its lip or halo. Glyphs are slow to draw in any but the simplest way, pictures of them are not.
QImage engraved(QImage text, const QColor &ink, bool isLight)
{
    const double scale = text.devicePixelRatio();
    text.setDevicePixelRatio(1);
    QImage shade = text;
    QPainter shading(&shade);
    shading.setCompositionMode(QPainter::CompositionMode_SourceIn);
    shading.fillRect(shade.rect(), isLight ? lcdTextColor : Qt::white);
    shading.end();

    QImage result = transparentImage(text.size());
    QPainter painter(&result);
    painter.setOpacity(isLight ? haloOpacity : lipOpacity);
    for (const QPoint &offset : isLight ? std::span<const QPoint>(haloOffsets) : lipOffsets) {
        painter.drawImage(offset, shade);
    }
    // The ink is translucent, and the shade around it must not tint it.
    painter.setOpacity(1);
    painter.setCompositionMode(QPainter::CompositionMode_DestinationOut);
    painter.drawImage(0, 0, text);
    painter.setCompositionMode(QPainter::CompositionMode_SourceOver);
    painter.setOpacity(ink.alphaF());
    painter.drawImage(0, 0, text);
    painter.end();
    result.setDevicePixelRatio(scale);
    return result;
}
} // namespace

MarqueeText::MarqueeText(const QString &text, const QFont &font, double height, double scale, MarqueeInk ink)
{
    if (!(height > 0) || !(scale > 0)) {
        return;
    }
    const QColor color = ink == MarqueeInk::Light ? lightLcdTextColor : lcdInk(ink == MarqueeInk::Full);
    QImage image = transparentImage({static_cast<int>(std::ceil((width(text, font) + 2 * overhang) * scale)),
        static_cast<int>(std::ceil(height * scale))});
    image.setDevicePixelRatio(scale);
    write(image, text, font, height, color);
    image = engraved(std::move(image), color, ink == MarqueeInk::Light);
    m_inkedRows = rowsWithInk(image);
    m_picture = QPixmap::fromImage(image);
}

QString MarqueeText::oneLine(const QString &string, const QFont &font)
{
    QString line = string.left(mostCharacters);
    if (line.size() < string.size()) {
        if (line.back().isHighSurrogate()) {
            line.chop(1);
        }
        line += QChar(0x2026);
    }
    std::replace_if(line.begin(), line.end(), breaksTheLine, QChar(u' '));
    return width(line, font) > mostPoints ? elided(line, font, mostPoints) : line;
}

double MarqueeText::width(const QString &text, const QFont &font)
{
    return QFontMetricsF(font).horizontalAdvance(text);
}

QString MarqueeText::elided(const QString &text, const QFont &font, double width)
{
    return QFontMetricsF(font).elidedText(text, Qt::ElideRight, width);
}

} // namespace tunedeck
