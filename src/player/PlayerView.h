// SPDX-License-Identifier: MIT
#pragma once

#include <QWidget>

namespace tunedeck {

class DrawerBackground;
class LcdView;
class PinstripeView;
class PlayerButton;
class ShadowView;
class SpeakerButton;
class TunedeckPlayerButton;
class VolumeSlider;
class WindowBackground;
class WindowButtonsView;
class WindowControlButton;
struct SkinEnvironment;

/// The content of the main window: the player's controls in its upper 64 points and, below them, as much of the drawer
/// as the window is high enough to show. It makes, names and lays out the controls. The ViewController decides what
/// they show and do.
class PlayerView : public QWidget {
    Q_OBJECT

public:
    explicit PlayerView(const SkinEnvironment &environment, QWidget *parent = nullptr);

    [[nodiscard]] WindowButtonsView &windowButtonsView() { return *m_windowButtonsView; }
    [[nodiscard]] WindowControlButton &closeButton() { return *m_closeButton; }
    [[nodiscard]] WindowControlButton &minimizeButton() { return *m_minimizeButton; }
    [[nodiscard]] WindowControlButton &maximizeButton() { return *m_maximizeButton; }
    [[nodiscard]] TunedeckPlayerButton &backwardButton() { return *m_backwardButton; }
    [[nodiscard]] PlayerButton &playPauseButton() { return *m_playPauseButton; }
    [[nodiscard]] TunedeckPlayerButton &forwardButton() { return *m_forwardButton; }
    [[nodiscard]] SpeakerButton &volumeMinButton() { return *m_volumeMinButton; }
    [[nodiscard]] VolumeSlider &volumeSlider() { return *m_volumeSlider; }
    [[nodiscard]] SpeakerButton &volumeMaxButton() { return *m_volumeMaxButton; }
    [[nodiscard]] LcdView &lcd() { return *m_lcd; }
    [[nodiscard]] DrawerBackground &drawerContainerView() { return *m_drawerContainerView; }

protected:
    void resizeEvent(QResizeEvent *event) override;

private:
    void setUpWindowButtons();
    void setUpTransport();
    void setUpVolume();

    // From the back to the front, and in the order in which Tab goes through them. The quiet speaker alone is before
    // the slider for Tab, and in front of all.
    DrawerBackground *m_drawerContainerView;
    ShadowView *m_shadow;
    WindowBackground *m_background;
    PinstripeView *m_pinstripes;
    TunedeckPlayerButton *m_backwardButton;
    PlayerButton *m_playPauseButton;
    TunedeckPlayerButton *m_forwardButton;
    VolumeSlider *m_volumeSlider;
    SpeakerButton *m_volumeMinButton;
    SpeakerButton *m_volumeMaxButton;
    LcdView *m_lcd;
    WindowButtonsView *m_windowButtonsView;
    WindowControlButton *m_closeButton;
    WindowControlButton *m_minimizeButton;
    WindowControlButton *m_maximizeButton;
};

} // namespace tunedeck
