// SPDX-License-Identifier: MIT
#include "PlayerView.h"

#include "GlyphButton.h"
#include "LcdView.h"
#include "VolumeSlider.h"
#include "WindowButtonsView.h"

#include <QFrame>
#include <QVBoxLayout>

namespace tunedeck {

namespace {
constexpr QRect windowButtonsFrame(4, 2, 22, 60);
/// In the group of the window's buttons.
constexpr QRect closeButtonFrame(4, 4, 14, 14);
constexpr QRect minimizeButtonFrame(4, 23, 14, 14);
constexpr QRect maximizeButtonFrame(4, 42, 14, 14);
constexpr QRect backwardButtonFrame(30, 9, 25, 25);
constexpr QRect playPauseButtonFrame(57, 4, 35, 35);
constexpr QRect forwardButtonFrame(94, 9, 25, 25);
constexpr QRect volumeMinButtonFrame(28, 45, 14, 14);
constexpr QRect volumeSliderFrame(41, 42, 68, 20);
constexpr QRect volumeMaxButtonFrame(109, 45, 14, 14);
constexpr QPoint lcdOrigin(130, 6);
constexpr int lcdHeight = 52;
constexpr int lcdRightMargin = 8;
constexpr int drawerTop = 60;
constexpr int drawerHeight = 64;

void setFaceColor(GlyphButton &button, const QColor &face, const QColor &glyph)
{
    QPalette palette;
    palette.setColor(QPalette::Button, face);
    palette.setColor(QPalette::ButtonText, glyph);
    button.setPalette(palette);
}

void setName(QWidget &control, const QString &name)
{
    control.setAccessibleName(name);
    control.setToolTip(name);
}
} // namespace

PlayerView::PlayerView(QWidget *parent)
    : QWidget(parent)
    , m_backwardButton(new GlyphButton(GlyphButton::Glyph::Backward, GlyphButton::Face::Round, this))
    , m_playPauseButton(new GlyphButton(GlyphButton::Glyph::Play, GlyphButton::Face::Round, this))
    , m_forwardButton(new GlyphButton(GlyphButton::Glyph::Forward, GlyphButton::Face::Round, this))
    , m_volumeMinButton(new GlyphButton(GlyphButton::Glyph::Quiet, GlyphButton::Face::None, this))
    , m_volumeSlider(new VolumeSlider(this))
    , m_volumeMaxButton(new GlyphButton(GlyphButton::Glyph::Loud, GlyphButton::Face::None, this))
    , m_lcd(new LcdView(this))
    , m_drawerContainerView(new QWidget(this))
    , m_windowButtonsView(new WindowButtonsView(this))
    , m_closeButton(new GlyphButton(GlyphButton::Glyph::Close, GlyphButton::Face::Round, m_windowButtonsView))
    , m_minimizeButton(new GlyphButton(GlyphButton::Glyph::Minimize, GlyphButton::Face::Round, m_windowButtonsView))
    , m_maximizeButton(new GlyphButton(GlyphButton::Glyph::Maximize, GlyphButton::Face::Round, m_windowButtonsView))
{
    setUpWindowButtons();
    setUpTransport();
    setUpVolume();
    setUpDrawer();
}

WindowButtonsView &PlayerView::windowButtonsView()
{
    return *m_windowButtonsView;
}

GlyphButton &PlayerView::closeButton()
{
    return *m_closeButton;
}

GlyphButton &PlayerView::minimizeButton()
{
    return *m_minimizeButton;
}

GlyphButton &PlayerView::maximizeButton()
{
    return *m_maximizeButton;
}

GlyphButton &PlayerView::backwardButton()
{
    return *m_backwardButton;
}

GlyphButton &PlayerView::playPauseButton()
{
    return *m_playPauseButton;
}

GlyphButton &PlayerView::forwardButton()
{
    return *m_forwardButton;
}

GlyphButton &PlayerView::volumeMinButton()
{
    return *m_volumeMinButton;
}

VolumeSlider &PlayerView::volumeSlider()
{
    return *m_volumeSlider;
}

GlyphButton &PlayerView::volumeMaxButton()
{
    return *m_volumeMaxButton;
}

LcdView &PlayerView::lcd()
{
    return *m_lcd;
}

QWidget &PlayerView::drawerContainerView()
{
    return *m_drawerContainerView;
}

void PlayerView::resizeEvent(QResizeEvent *)
{
    m_lcd->setGeometry(lcdOrigin.x(), lcdOrigin.y(), width() - lcdOrigin.x() - lcdRightMargin, lcdHeight);
    m_drawerContainerView->setGeometry(0, drawerTop, width(), drawerHeight);
}

void PlayerView::setUpWindowButtons()
{
    m_windowButtonsView->setGeometry(windowButtonsFrame);
    m_closeButton->setGeometry(closeButtonFrame);
    m_minimizeButton->setGeometry(minimizeButtonFrame);
    m_maximizeButton->setGeometry(maximizeButtonFrame);
    setFaceColor(*m_closeButton, QColor(0xec, 0x7a, 0x72), QColor(0x6b, 0x12, 0x0e));
    setFaceColor(*m_minimizeButton, QColor(0xf2, 0xc1, 0x6b), QColor(0x6e, 0x47, 0x09));
    setFaceColor(*m_maximizeButton, QColor(0xa4, 0xcc, 0x75), QColor(0x2c, 0x52, 0x10));
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
    m_volumeMinButton->setGeometry(volumeMinButtonFrame);
    m_volumeSlider->setGeometry(volumeSliderFrame);
    m_volumeMaxButton->setGeometry(volumeMaxButtonFrame);
    setName(*m_volumeMinButton, tr("Silence", "Button at the quiet end of the volume slider"));
    setName(*m_volumeSlider, tr("Volume", "Volume slider"));
    setName(*m_volumeMaxButton, tr("Full volume", "Button at the loud end of the volume slider"));
}

void PlayerView::setUpDrawer()
{
    auto *field = new QFrame(m_drawerContainerView);
    field->setFrameStyle(QFrame::StyledPanel | QFrame::Sunken);
    field->setBackgroundRole(QPalette::Mid);
    field->setAutoFillBackground(true);
    auto *layout = new QVBoxLayout(m_drawerContainerView);
    layout->setContentsMargins(8, 4, 8, 8);
    layout->addWidget(field);
    m_drawerContainerView->lower();
    m_drawerContainerView->hide();
}

} // namespace tunedeck
