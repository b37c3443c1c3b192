// SPDX-License-Identifier: MIT
#include "player/LcdView.h"

#include "platform/Appearance.h"
#include "player/ScrollingMarqueeView.h"
#include "skin/drawing/LCDTextColor.h"
#include "skin/drawing/PixelFont.h"
#include "skin/views/ClassicAudioProgressSlider.h"
#include "skin/views/PlainButton.h"
#include "widgets/names.h"

#include <QEvent>
#include <QLabel>
#include <QMargins>
#include <QResizeEvent>

#include <algorithm>

namespace tunedeck {

namespace {
constexpr int margin = 8;
constexpr int gap = 6;
constexpr int trackInfoHeight = 30;
constexpr int rowCentre = 36;
constexpr int rowHeight = 12;
constexpr int infoButtonWidth = 14;
/// Room for a hand to hit the info button. It ends at the track and before the time.
constexpr QMargins infoButtonMargins(3, 0, 3, 8);
/// Room for "00:00", so that the slider does not jump at the tenth minute.
constexpr int leastTimeWidth = 30;

} // namespace

LcdView::LcdView(const SkinEnvironment &environment, QWidget *parent)
    : LCDBackgroundView(environment, parent)
    , m_trackInfoLabel(new ScrollingMarqueeView(this))
    , m_primaryTimeLabel(new QLabel(this))
    , m_trackProgressSlider(new ClassicAudioProgressSlider(environment, this))
    , m_secondaryTimeLabel(new QLabel(this))
    , m_isLiveLabel(new QLabel(this))
    , m_infoButton(new PlainButton(environment, this))
{
    applyContrast(environment.appearance.isHighContrast());
    connect(&environment.appearance, &Appearance::highContrastChanged, this, &LcdView::applyContrast);
    setUpTexts();
}

void LcdView::setTime(QLabel &label, const QString &time)
{
    if (label.text() == time) {
        return;
    }
    label.setText(time);
    // Both times and the knob change in one frame. Where three rectangles of a frame lie side by side, picom 12 shows
    // black between them, so the frame gets the one that encloses them.
    update(0, rowCentre - rowHeight / 2, width(), rowHeight);
}

void LcdView::setLongestTime(const QString &time)
{
    if (time == m_longestTime) {
        return;
    }
    m_longestTime = time;
    const int width = m_secondaryTimeLabel->fontMetrics().horizontalAdvance(time);
    if (width != m_longestTimeWidth) {
        m_longestTimeWidth = width;
        layOut();
    }
}

void LcdView::applyContrast(bool isHigh)
{
    QPalette ink;
    for (const auto role : {QPalette::WindowText, QPalette::ButtonText, QPalette::Text}) {
        ink.setColor(role, lcdInk(isHigh));
    }
    setPalette(ink);
    m_trackInfoLabel->setHighContrast(isHigh);
}

bool LcdView::event(QEvent *event)
{
    // A label sends this when its text becomes wider or narrower.
    if (event->type() == QEvent::LayoutRequest) {
        layOut();
    }
    return LCDBackgroundView::event(event);
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

    QFont infoFont = pixelFont(romanSerif(), 12, *this);
    infoFont.setBold(true);
    infoFont.setItalic(true);
    // The only letter is Latin. Qt would look for fonts of other scripts, too, before it draws the letter.
    infoFont.setStyleHint(QFont::Serif, QFont::NoFontMerging);
    m_infoButton->setFont(infoFont);
    m_infoButton->setTargetMargins(infoButtonMargins);
    m_infoButton->setText(QStringLiteral("i"));
    setName(*m_infoButton, tr("Show or hide the playlists", "The info button"));
}

void LcdView::layOut()
{
    const int top = rowCentre - rowHeight / 2;
    const int infoX = width() - margin - infoButtonWidth + 4;
    m_trackInfoLabel->setGeometry(margin, 0, width() - 2 * margin, trackInfoHeight);
    m_infoButton->setGeometry(QRect(infoX, top, infoButtonWidth, rowHeight).marginsAdded(infoButtonMargins));
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
