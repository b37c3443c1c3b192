// SPDX-License-Identifier: MIT
#pragma once

#include "music/MusicConnector.h"
#include "music/MusicConnectorTrack.h"
#include "music/MusicTypes.h"
#include "player/ControlAvailability.h"
#include "player/TimeLabelMenu.h"
#include "player/TrackDisplay.h"
#include "skin/views/VolumeSlider.h"

#include <QObject>
#include <QString>
#include <QTimer>

#include <optional>

class QAction;
class QWidget;

namespace tunedeck {

class Appearance;
class DrawerHost;
class FollowablePlayers;
class HoldableButton;
class MusicApplication;
class PlayerView;
class UserDefaults;
class WindowActivation;

/// Shows the connector's state in the player's view and turns the user's actions there into commands. It owns no
/// playback logic. Signals carry what the rest of the program shows of the music: the play/pause item's title, the tile
/// in the dock, the dock menu's track.
class ViewController : public QObject, public MusicConnectorDelegate, public VolumeSliderScrollEventDelegate {
    Q_OBJECT
    Q_PROPERTY(std::optional<tunedeck::MusicConnectorTrack> currentTrack READ currentTrack WRITE setCurrentTrack NOTIFY
            currentTrackChanged)
    Q_PROPERTY(bool remainingTimeEnabled READ remainingTimeEnabled WRITE setRemainingTimeEnabled NOTIFY
            remainingTimeEnabledChanged)
    Q_PROPERTY(bool mouseIsHovering READ mouseIsHovering NOTIFY mouseIsHoveringChanged)

public:
    /// The step of an arrow key on the progress slider.
    static constexpr double seekStepInSec = 5;

    /// The objects that the controller watches and commands. All must outlive it.
    struct Environment {
        MusicConnector &musicConnector;
        UserDefaults &defaults;
        const Appearance &appearance;
        const WindowActivation &windowActivation;
        const FollowablePlayers &players;
        DrawerHost &drawerHost;
    };

    /// Brings `view`, which must outlive the controller, up to date and makes the controller the connector's delegate.
    ViewController(const Environment &environment, PlayerView &view, QObject *parent = nullptr);
    ~ViewController() override;

    [[nodiscard]] const std::optional<MusicConnectorTrack> &currentTrack() const { return m_currentTrack; }
    /// No value leaves the display as it is; only the feed type clears it.
    void setCurrentTrack(const std::optional<MusicConnectorTrack> &track);
    [[nodiscard]] bool remainingTimeEnabled() const { return m_remainingTimeEnabled; }
    void setRemainingTimeEnabled(bool enabled);

    /// Always false. The signal repeats it whenever the pointer enters or leaves the view; the window's buttons track
    /// the pointer themselves.
    [[nodiscard]] bool mouseIsHovering() const { return m_mouseIsHovering; }

    /// The name of the image that the dock shows in `state`.
    [[nodiscard]] QString dockTileImage(FourCharCode state, FeedType feedType) const;
    /// Whether `item` is enabled. Also sets the check state of the time label's items.
    bool validateMenuItem(QAction &item) const;
    [[nodiscard]] QMenu &timeLabelMenu() { return m_timeLabelMenu; }

    void playerStateDidChange(FourCharCode state) override;
    void adjustVolume(double delta) override;
    /// Keeps the volume slider's tooltip away until a second after the last step: it would cover the knob.
    void volumeSliderDidScroll() override;
    /// The title of the play/pause menu item in this player state.
    [[nodiscard]] QString playPauseTitle(FourCharCode state) const;

    bool eventFilter(QObject *watched, QEvent *event) override;

public Q_SLOTS:
    void closeWindow();
    void toggleDrawer();
    /// The user moved the knob of the progress slider.
    void trackingDidChange();
    /// The user moved the knob of the volume slider to `percent`.
    void volumeSliderAdjusted(double percent);
    /// Sets silence if `sender` is the quiet speaker, full volume if it is the loud one. Any other sender changes
    /// nothing.
    void volMinMaxSet(const QWidget &sender);

Q_SIGNALS:
    void currentTrackChanged();
    void remainingTimeEnabledChanged(bool enabled);
    void mouseIsHoveringChanged(bool isHovering);

    void playPausePressed();
    void nextPressed();
    void prevPressed();
    /// The track now on the display; no value when the display was cleared.
    void currentTrackInfoChanged(const std::optional<tunedeck::MusicConnectorTrack> &track);
    void playPauseTitleChanged(const QString &title);
    void dockTileImageChanged(const QString &imageName);

private:
    void setUpWindowButtons();
    void setUpTransport();
    void seekWhileHeld(HoldableButton &button, bool (MusicApplication::*seek)());
    void setUpProgressSlider();
    void observeConnector();
    void bindVolume();
    void bindRemainingTime();
    void observeDockTileSettings();
    void observeExpansion();
    void moveKeyboardFromDrawer();

    void updateLCDForFeedType();
    void clearTrackInfo();
    void updateTrackInfo(const MusicConnectorTrack &track);
    void updateSecondaryTimeLabel();
    void updatePlayPauseGlyph(FourCharCode state);
    void updateDockTile(FourCharCode state);
    void timeLabelMenuItemSelected(const QAction &item);
    void setMouseIsHovering(bool isHovering);
    void scrubToSliderPosition();
    void durationDidChange();

    MusicConnector &m_musicConnector;
    UserDefaults &m_defaults;
    const Appearance &m_appearance;
    DrawerHost &m_drawerHost;
    PlayerView &m_view;

    std::optional<MusicConnectorTrack> m_currentTrack;
    bool m_mouseIsHovering = false;
    bool m_remainingTimeEnabled = true;
    TrackDisplay m_display;
    ControlAvailability m_availability;
    TimeLabelMenu m_timeLabelMenu;
    QTimer m_tooltipsTimer{this};
    QTimer m_dragLetGoTimer{this};
    bool m_isScrubbing = false;
    double m_lastNewPositionInSec = 0;
};

} // namespace tunedeck
