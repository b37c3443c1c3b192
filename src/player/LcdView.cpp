// SPDX-License-Identifier: MIT
#include "LcdView.h"

#include "GlyphButton.h"
#include "PercentSlider.h"
#include "PixelFont.h"
#include "ScrollingMarqueeView.h"

#include <QEvent>
#include <QLabel>
#include <QLinearGradient>
#include <QPainter>

#include <algorithm>

namespace tunedeck {

namespace {
constexpr int margin = 8;
constexpr int gap = 6;
constexpr int trackInfoHeight = 30;
constexpr int rowCentre = 36;
constexpr int rowHeight = 12;
constexpr int infoButtonWidth = 14;
/// Room for "00:00", so that the slider does not jump at the tenth minute.
constexpr int leastTimeWidth = 30;
constexpr qreal cornerRadius = 4;

QPalette lcdPalette(bool dark)
{
    const QColor glass = dark ? QColor(0x3b, 0x40, 0x36) : QColor(0xe9, 0xec, 0xd3);
    const QColor text = dark ? QColor(0xd9, 0xdd, 0xc9) : QColor(0x35, 0x39, 0x2a);
    QPalette palette(glass, glass);
    for (const auto role : {QPalette::WindowText, QPalette::ButtonText, QPalette::Text}) {
        palette.setColor(role, text);
    }
    palette.setColor(QPalette::Button, dark ? QColor(0x8a, 0x92, 0x7c) : glass);
    palette.setColor(QPalette::Highlight, dark ? QColor(0x8d, 0x95, 0x78) : QColor(0x7f, 0x86, 0x69));
    return palette;
}
} // namespace

LcdView::LcdView(QWidget *parent)
    : QWidget(parent)
    , m_trackInfoLabel(new ScrollingMarqueeView(this))
    , m_primaryTimeLabel(new QLabel(this))
    , m_trackProgressSlider(new PercentSlider(this))
    , m_secondaryTimeLabel(new QLabel(this))
    , m_isLiveLabel(new QLabel(this))
    , m_infoButton(new GlyphButton(GlyphButton::Glyph::None, GlyphButton::Face::None, this))
{
    setUpTexts();
    setDark(false);
}

ScrollingMarqueeView &LcdView::trackInfoLabel()
{
    return *m_trackInfoLabel;
}

QLabel &LcdView::primaryTimeLabel()
{
    return *m_primaryTimeLabel;
}

PercentSlider &LcdView::trackProgressSlider()
{
    return *m_trackProgressSlider;
}

QLabel &LcdView::secondaryTimeLabel()
{
    return *m_secondaryTimeLabel;
}

QLabel &LcdView::isLiveLabel()
{
    return *m_isLiveLabel;
}

GlyphButton &LcdView::infoButton()
{
    return *m_infoButton;
}

void LcdView::setDark(bool dark)
{
    setPalette(lcdPalette(dark));
    m_trackInfoLabel->setDark(dark);
}

void LcdView::setLongestTime(const QString &time)
{
    const int width = m_secondaryTimeLabel->fontMetrics().horizontalAdvance(time);
    if (width == m_longestTimeWidth) {
        return;
    }
    m_longestTimeWidth = width;
    layOut();
}

bool LcdView::event(QEvent *event)
{
    // A label whose text became wider or narrower asks for this.
    if (event->type() == QEvent::LayoutRequest) {
        layOut();
    }
    return QWidget::event(event);
}

void LcdView::paintEvent(QPaintEvent *)
{
    QPainter painter(this);
    painter.setRenderHint(QPainter::Antialiasing);
    const QColor glass = palette().color(QPalette::Window);
    QLinearGradient light(0, 0, 0, height());
    light.setColorAt(0, glass.lighter(106));
    light.setColorAt(1, glass.darker(104));
    painter.setBrush(light);
    painter.setPen(glass.darker(170));
    painter.drawRoundedRect(QRectF(rect()).adjusted(0.5, 0.5, -0.5, -0.5), cornerRadius, cornerRadius);
}

void LcdView::resizeEvent(QResizeEvent *)
{
    layOut();
}

void LcdView::setUpTexts()
{
    for (QLabel *label : {m_primaryTimeLabel, m_secondaryTimeLabel, m_isLiveLabel}) {
        label->setTextFormat(Qt::PlainText);
        label->setFont(pixelFont(humanistSans(), 9.5, *this));
    }
    m_secondaryTimeLabel->setAlignment(Qt::AlignRight | Qt::AlignVCenter);

    QFont liveFont = pixelFont(humanistSans(), 9, *this);
    liveFont.setBold(true);
    m_isLiveLabel->setFont(liveFont);
    m_isLiveLabel->setText(tr("Live", "In place of the times while a live stream plays"));
    m_isLiveLabel->setAlignment(Qt::AlignCenter);
    m_isLiveLabel->hide();

    m_trackProgressSlider->setAccessibleName(tr("Position", "For accessibility: the progress slider"));

    QFont infoFont = pixelFont(
        {QStringLiteral("Times New Roman"), QStringLiteral("Liberation Serif"), QStringLiteral("serif")}, 12, *this);
    infoFont.setBold(true);
    infoFont.setItalic(true);
    m_infoButton->setFont(infoFont);
    m_infoButton->setText(QStringLiteral("i"));
    const QString drawer = tr("Show or hide the playlists", "The info button");
    m_infoButton->setAccessibleName(drawer);
    m_infoButton->setToolTip(drawer);
}

void LcdView::layOut()
{
    const int top = rowCentre - rowHeight / 2;
    const int infoX = width() - margin - infoButtonWidth + 4;
    m_trackInfoLabel->setGeometry(margin, 0, width() - 2 * margin, trackInfoHeight);
    m_infoButton->setGeometry(infoX, top, infoButtonWidth, rowHeight);
    m_isLiveLabel->setGeometry(margin, top, width() - 2 * margin, rowHeight);

    const int leastWidth = std::max(leastTimeWidth, m_longestTimeWidth);
    const int primaryWidth = std::max(leastWidth, m_primaryTimeLabel->sizeHint().width());
    const int secondaryWidth = std::max(leastWidth, m_secondaryTimeLabel->sizeHint().width());
    const int secondaryX = infoX - gap - secondaryWidth;
    const int sliderX = margin + primaryWidth + gap;
    m_primaryTimeLabel->setGeometry(margin, top, primaryWidth, rowHeight);
    m_secondaryTimeLabel->setGeometry(secondaryX, top, secondaryWidth, rowHeight);
    m_trackProgressSlider->setGeometry(sliderX, top, secondaryX - gap - sliderX, rowHeight);
}

} // namespace tunedeck
