// SPDX-License-Identifier: MIT
#include "player/PlayerView.h"

#include "player/LcdView.h"
#include "player/SpeakerButton.h"
#include "skin/views/DrawerBackground.h"
#include "skin/views/PinstripeView.h"
#include "skin/views/PlayerButton.h"
#include "skin/views/ShadowView.h"
#include "skin/views/TunedeckPlayerButton.h"
#include "skin/views/VolumeSlider.h"
#include "skin/views/WindowBackground.h"
#include "skin/views/WindowButtonsView.h"
#include "skin/views/WindowControlButton.h"
#include "widgets/names.h"

#include <QMargins>

namespace tunedeck {

namespace {
constexpr int playerHeight = 64;
constexpr QRect windowButtonsFrame(4, 2, 22, 60);
/// Relative to the group of the window's buttons.
constexpr QRect closeButtonFrame(4, 4, 14, 14);
constexpr QRect minimizeButtonFrame(4, 23, 14, 14);
constexpr QRect maximizeButtonFrame(4, 42, 14, 14);
constexpr QRect backwardButtonFrame(30, 9, 25, 25);
constexpr QRect playPauseButtonFrame(57, 4, 35, 35);
constexpr QRect forwardButtonFrame(94, 9, 25, 25);
constexpr QRect volumeMinButtonFrame(32, 44, 12, 16);
constexpr QRect volumeSliderFrame(42, 42, 68, 20);
constexpr QRect volumeMaxButtonFrame(108, 44, 12, 16);
/// Room for a hand to hit the speakers. It ends at the slider, and beside the window's buttons and the display.
constexpr QMargins volumeMinButtonMargins(8, 2, 0, 2);
constexpr QMargins volumeMaxButtonMargins(0, 2, 8, 2);
constexpr QPoint lcdOrigin(130, 6);
constexpr int lcdHeight = 52;
constexpr int lcdRightMargin = 8;
constexpr int drawerTop = 60;
constexpr int drawerHeight = 64;
/// The strip that casts the shadow ends where the player's lower corners begin to round.
constexpr int shadowTop = 35;
constexpr int shadowHeight = 40;
} // namespace

PlayerView::PlayerView(const SkinEnvironment &environment, QWidget *parent)
    : QWidget(parent)
    , m_drawerContainerView(new DrawerBackground(environment, this))
    , m_shadow(new ShadowView(environment, m_drawerContainerView))
    , m_background(new WindowBackground(environment, this))
    , m_pinstripes(new PinstripeView(environment, this))
    , m_backwardButton(new TunedeckPlayerButton(environment, this))
    , m_playPauseButton(new PlayerButton(environment, this))
    , m_forwardButton(new TunedeckPlayerButton(environment, this))
    , m_volumeSlider(new VolumeSlider(environment, this))
    , m_volumeMinButton(new SpeakerButton(environment, *m_volumeSlider, this))
    , m_volumeMaxButton(new SpeakerButton(environment, *m_volumeSlider, this))
    , m_lcd(new LcdView(environment, this))
    , m_windowButtonsView(new WindowButtonsView(this))
    , m_closeButton(new WindowControlButton(environment, m_windowButtonsView))
    , m_minimizeButton(new WindowControlButton(environment, m_windowButtonsView))
    , m_maximizeButton(new WindowControlButton(environment, m_windowButtonsView))
{
    setUpWindowButtons();
    setUpTransport();
    setUpVolume();
    m_drawerContainerView->hide();
}

void PlayerView::resizeEvent(QResizeEvent *)
{
    m_background->setGeometry(0, 0, width(), playerHeight);
    m_pinstripes->setGeometry(0, 0, width(), playerHeight);
    m_lcd->setGeometry(lcdOrigin.x(), lcdOrigin.y(), width() - lcdOrigin.x() - lcdRightMargin, lcdHeight);
    m_drawerContainerView->setGeometry(0, drawerTop, width(), drawerHeight);
    m_shadow->setGeometry(0, shadowTop - drawerTop, width(), shadowHeight);
}

void PlayerView::setUpWindowButtons()
{
    m_windowButtonsView->setGeometry(windowButtonsFrame);
    // The quiet speaker gets the clicks in their margin. Screen readers read the lowest view first.
    m_windowButtonsView->stackUnder(m_backwardButton);
    m_closeButton->setGeometry(closeButtonFrame);
    m_minimizeButton->setGeometry(minimizeButtonFrame);
    m_maximizeButton->setGeometry(maximizeButtonFrame);
    setName(*m_closeButton, tr("Close", "Window button"));
    setName(*m_minimizeButton, tr("Minimize", "Window button"));
    setName(*m_maximizeButton, tr("Zoom", "Window button"));
}

void PlayerView::setUpTransport()
{
    m_backwardButton->setGeometry(backwardButtonFrame);
    m_playPauseButton->setGeometry(playPauseButtonFrame);
    m_forwardButton->setGeometry(forwardButtonFrame);
    setName(*m_backwardButton, tr("Previous", "Transport button"));
    setName(*m_playPauseButton, tr("Play or pause", "Transport button"));
    setName(*m_forwardButton, tr("Next", "Transport button"));
}

void PlayerView::setUpVolume()
{
    m_volumeSlider->setGeometry(volumeSliderFrame);
    m_volumeMinButton->setGeometry(volumeMinButtonFrame.marginsAdded(volumeMinButtonMargins));
    m_volumeMinButton->setTargetMargins(volumeMinButtonMargins);
    m_volumeMaxButton->setGeometry(volumeMaxButtonFrame.marginsAdded(volumeMaxButtonMargins));
    m_volumeMaxButton->setTargetMargins(volumeMaxButtonMargins);
    m_volumeMinButton->setSpeaker(SpeakerButton::Speaker::Quiet);
    m_volumeMaxButton->setSpeaker(SpeakerButton::Speaker::Loud);
    setTabOrder(m_forwardButton, m_volumeMinButton);
    setTabOrder(m_volumeMinButton, m_volumeSlider);
    setName(*m_volumeMinButton, tr("Silence", "Button at the quiet end of the volume slider"));
    setName(*m_volumeSlider, tr("Volume", "Volume slider"));
    setName(*m_volumeMaxButton, tr("Full volume", "Button at the loud end of the volume slider"));
}

} // namespace tunedeck
