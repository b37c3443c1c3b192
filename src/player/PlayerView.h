// SPDX-License-Identifier: MIT
#pragma once

#include <QWidget>

namespace tunedeck {

class DrawerBackground;
class LcdView;
class PinstripeView;
class PlainButton;
class PlayerButton;
class ShadowView;
class TunedeckPlayerButton;
class VolumeSlider;
class WindowBackground;
class WindowButtonsView;
class WindowControlButton;
struct SkinEnvironment;

/// The content of the main window: the player's controls in its upper 64 points and, below them, what of the drawer
/// the window is high enough to show. It makes the controls, names them and lays them out; what they show and do is
/// the ViewController's business.
class PlayerView : public QWidget {
    Q_OBJECT

public:
    explicit PlayerView(const SkinEnvironment &environment, QWidget *parent = nullptr);

    [[nodiscard]] WindowButtonsView &windowButtonsView();
    [[nodiscard]] WindowControlButton &closeButton();
    [[nodiscard]] WindowControlButton &minimizeButton();
    [[nodiscard]] WindowControlButton &maximizeButton();
    [[nodiscard]] TunedeckPlayerButton &backwardButton();
    [[nodiscard]] PlayerButton &playPauseButton();
    [[nodiscard]] TunedeckPlayerButton &forwardButton();
    [[nodiscard]] PlainButton &volumeMinButton();
    [[nodiscard]] VolumeSlider &volumeSlider();
    [[nodiscard]] PlainButton &volumeMaxButton();
    [[nodiscard]] LcdView &lcd();
    [[nodiscard]] DrawerBackground &drawerContainerView();

protected:
    void resizeEvent(QResizeEvent *event) override;

private:
    void setUpWindowButtons();
    void setUpTransport();
    void setUpVolume();

    // From the back to the front, and in the order in which Tab goes through them.
    DrawerBackground *m_drawerContainerView;
    ShadowView *m_shadow;
    WindowBackground *m_background;
    PinstripeView *m_pinstripes;
    TunedeckPlayerButton *m_backwardButton;
    PlayerButton *m_playPauseButton;
    TunedeckPlayerButton *m_forwardButton;
    PlainButton *m_volumeMinButton;
    VolumeSlider *m_volumeSlider;
    PlainButton *m_volumeMaxButton;
    LcdView *m_lcd;
    WindowButtonsView *m_windowButtonsView;
    WindowControlButton *m_closeButton;
    WindowControlButton *m_minimizeButton;
    WindowControlButton *m_maximizeButton;
};

} // namespace tunedeck
