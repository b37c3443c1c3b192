// SPDX-License-Identifier: MIT
#pragma once

#include <QWidget>

namespace tunedeck {

class GlyphButton;
class LcdView;
class VolumeSlider;
class WindowButtonsView;

/// The content of the main window: the player's controls in its upper 64 points and, below them, what of the drawer
/// the window is high enough to show. It makes the controls, names them and lays them out; what they show and do is
/// the ViewController's business.
class PlayerView : public QWidget {
    Q_OBJECT

public:
    explicit PlayerView(QWidget *parent = nullptr);

    [[nodiscard]] WindowButtonsView &windowButtonsView();
    [[nodiscard]] GlyphButton &closeButton();
    [[nodiscard]] GlyphButton &minimizeButton();
    [[nodiscard]] GlyphButton &maximizeButton();
    [[nodiscard]] GlyphButton &backwardButton();
    [[nodiscard]] GlyphButton &playPauseButton();
    [[nodiscard]] GlyphButton &forwardButton();
    [[nodiscard]] GlyphButton &volumeMinButton();
    [[nodiscard]] VolumeSlider &volumeSlider();
    [[nodiscard]] GlyphButton &volumeMaxButton();
    [[nodiscard]] LcdView &lcd();
    [[nodiscard]] QWidget &drawerContainerView();

protected:
    void resizeEvent(QResizeEvent *event) override;

private:
    void setUpWindowButtons();
    void setUpTransport();
    void setUpVolume();
    void setUpDrawer();

    // In the order in which Tab goes through them.
    GlyphButton *m_backwardButton;
    GlyphButton *m_playPauseButton;
    GlyphButton *m_forwardButton;
    GlyphButton *m_volumeMinButton;
    VolumeSlider *m_volumeSlider;
    GlyphButton *m_volumeMaxButton;
    LcdView *m_lcd;
    QWidget *m_drawerContainerView;
    WindowButtonsView *m_windowButtonsView;
    GlyphButton *m_closeButton;
    GlyphButton *m_minimizeButton;
    GlyphButton *m_maximizeButton;
};

} // namespace tunedeck
