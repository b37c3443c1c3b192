// SPDX-License-Identifier: MIT
#include "drawer/PlaylistView.h"

#include "platform/Appearance.h"
#include "skin/drawing/PixelFont.h"
#include "skin/views/EngravedLabel.h"
#include "skin/views/MetalButton.h"
#include "skin/views/MetalPopupButton.h"
#include "widgets/names.h"

#include <QFontMetricsF>
#include <QResizeEvent>

#include <algorithm>
#include <cmath>

namespace tunedeck {

namespace {
/// One point less than usual for such controls.
constexpr double fontPixels = 11;
constexpr QColor captionInk(255, 255, 255, 217);
constexpr QColor captionShadowColor(73, 78, 89);
/// The middle of the part of the inset field that the player does not cover.
constexpr int rowCentre = 31;
constexpr int sideMargin = 10;
constexpr int captionInset = 8;
constexpr int widestCaption = 96;
constexpr int pickerHeight = 22;
constexpr int gap = 6;
/// A pop-up's face begins this far right of its frame.
constexpr int pickerMargin = 9;
constexpr int buttonHeight = 30;
constexpr int leastDoneWidth = 52;
constexpr int modeWidth = 42;
/// A metal button's face is not in the middle of its frame, nor is a pop-up's.
constexpr int buttonLift = 13;
constexpr int pickerLift = 10;
/// The room of a metal button's frame around its title.
constexpr int titleMargin = 28;

int textWidth(const QWidget &widget, const QString &text)
{
    return static_cast<int>(std::ceil(QFontMetricsF(widget.font()).horizontalAdvance(text)));
}
} // namespace

PlaylistView::PlaylistView(const SkinEnvironment &environment, QWidget *parent)
    : QWidget(parent)
    , m_playlistLabel(new EngravedLabel(captionInk, Shadow{{0, 1}, 0, captionShadowColor}, this))
    , m_playlistPicker(new MetalPopupButton(environment, this))
    , m_doneButton(new MetalButton(environment, this))
    , m_shuffleButton(new MetalButton(environment, this))
    , m_repeatButton(new MetalButton(environment, this))
{
    const QFont font = pixelFont(humanistSans(), fontPixels, *this);
    QFont bold = font;
    bold.setBold(true);
    m_playlistLabel->setFont(bold);
    m_playlistLabel->setAlignment(Qt::AlignRight);
    m_playlistLabel->setText(tr("Playlist:", "Caption in the drawer, before the playlist picker"));
    m_playlistLabel->setBuddy(m_playlistPicker);
    for (QWidget *control : std::initializer_list<QWidget *>{m_playlistPicker, m_doneButton, m_shuffleButton}) {
        control->setFont(font);
    }
    m_playlistPicker->setAppearance(AppearanceName::DarkAqua);
    m_playlistPicker->setAccessibleName(tr("Playlist", "For accessibility: the playlist picker"));
    m_doneButton->setText(tr("Done", "Button in the drawer: play the chosen playlist"));
    m_doneButton->setToolTip(tr("Play the chosen playlist", "Tooltip of the done button in the drawer"));
    setName(*m_shuffleButton, tr("Shuffle", "Button in the drawer"));
    setName(*m_repeatButton, tr("Repeat", "Button in the drawer"));
    m_shuffleButton->showFocusByLamp();
    m_repeatButton->showFocusByLamp();
}

void PlaylistView::resizeEvent(QResizeEvent *)
{
    const int captionWidth = std::min(widestCaption, textWidth(*m_playlistLabel, m_playlistLabel->text()) + 2);
    const int doneWidth = std::max(leastDoneWidth, textWidth(*m_doneButton, m_doneButton->text()) + titleMargin);
    const int buttonTop = rowCentre - buttonLift;
    const int repeatX = width() - sideMargin - modeWidth;
    const int shuffleX = repeatX - modeWidth;
    const int doneX = shuffleX - doneWidth;
    // The picker goes from the caption's end to the button's beginning. Its margin may cover the caption.
    const int pickerX = sideMargin + captionInset + captionWidth + gap - pickerMargin;
    m_playlistLabel->setGeometry(sideMargin + captionInset, rowCentre - pickerLift, captionWidth, 2 * pickerLift);
    m_playlistPicker->setGeometry(pickerX, rowCentre - pickerLift, doneX - pickerX, pickerHeight);
    m_doneButton->setGeometry(doneX, buttonTop, doneWidth, buttonHeight);
    m_shuffleButton->setGeometry(shuffleX, buttonTop, modeWidth, buttonHeight);
    m_repeatButton->setGeometry(repeatX, buttonTop, modeWidth, buttonHeight);
}

} // namespace tunedeck
