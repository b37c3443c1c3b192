// SPDX-License-Identifier: MIT
#pragma once

#include "MusicConnector.h"
#include "MusicConnectorTrack.h"
#include "MusicTypes.h"

#include <QMenu>
#include <QObject>
#include <QString>
#include <QTimer>

#include <optional>

class QAction;

namespace tunedeck {

class Appearance;
class DrawerHost;
class PlayerView;
class UserDefaults;
class WindowActivation;

/// Turns what the connector knows into what the player's view shows, and what the user does there into commands. It
/// owns no playback logic. What the rest of the program shows of the music (the play/pause item's title, the tile in
/// the dock, the dock menu's track) leaves by signals.
class ViewController : public QObject, public MusicConnectorDelegate {
    Q_OBJECT
    Q_PROPERTY(std::optional<tunedeck::MusicConnectorTrack> currentTrack READ currentTrack WRITE setCurrentTrack NOTIFY
            currentTrackChanged)
    Q_PROPERTY(bool remainingTimeEnabled READ remainingTimeEnabled WRITE setRemainingTimeEnabled NOTIFY
            remainingTimeEnabledChanged)

public:
    /// What the controller watches and commands; all must outlive it.
    struct Surroundings {
        MusicConnector &musicConnector;
        UserDefaults &defaults;
        const Appearance &appearance;
        const WindowActivation &windowActivation;
        DrawerHost &drawerHost;
    };

    /// Brings `view`, which must outlive the controller, up to date and makes the controller the connector's delegate.
    ViewController(const Surroundings &surroundings, PlayerView &view, QObject *parent = nullptr);
    ~ViewController() override;

    [[nodiscard]] const std::optional<MusicConnectorTrack> &currentTrack() const;
    /// None leaves the display as it is: what clears it is the feed type.
    void setCurrentTrack(const std::optional<MusicConnectorTrack> &track);
    [[nodiscard]] bool remainingTimeEnabled() const;
    void setRemainingTimeEnabled(bool enabled);

    /// The name of the image that the dock shows in `state`.
    [[nodiscard]] QString dockTileImage(FourCharCode state, FeedType feedType) const;
    /// Whether `item` is enabled. Also sets the check state of the time label's items.
    bool validateMenuItem(QAction &item) const;
    [[nodiscard]] QMenu &timeLabelMenu();

    void playerStateDidChange(FourCharCode state) override;
    /// What the play/pause menu item is called in this player state.
    [[nodiscard]] QString playPauseTitle(FourCharCode state) const;

public Q_SLOTS:
    void closeWindow();
    void toggleDrawer();

Q_SIGNALS:
    void currentTrackChanged();
    void remainingTimeEnabledChanged(bool enabled);

    void playPausePressed();
    void nextPressed();
    void prevPressed();
    /// The track now on the display; none when the display was cleared.
    void currentTrackInfoChanged(const std::optional<tunedeck::MusicConnectorTrack> &track);
    void playPauseTitleChanged(const QString &title);
    void dockTileImageChanged(const QString &imageName);

private:
    void setUpTransport();
    void observeConnector();
    void bindVolume();
    void bindTimeLabels();
    void observeAppearance();
    void buildTimeLabelMenu();
    void observeExpansion();

    void updateLCDForFeedType();
    void showControlsForFeedType(FeedType feedType);
    void showFallbackText(FeedType feedType);
    void clearTrackInfo();
    void updateTrackInfo(const MusicConnectorTrack &track);
    void updateSecondaryTimeLabel();
    void updatePlayPauseGlyph(FourCharCode state);
    void updateDockTile(FourCharCode state);
    void timeLabelMenuItemSelected(const QAction &item);
    void scrubToSliderPosition();

    MusicConnector &m_musicConnector;
    UserDefaults &m_defaults;
    const Appearance &m_appearance;
    DrawerHost &m_drawerHost;
    PlayerView &m_view;

    std::optional<MusicConnectorTrack> m_currentTrack;
    bool m_remainingTimeEnabled = true;
    QMetaObject::Connection m_secondaryTimeBinding;
    QMenu m_timeLabelMenu;
    QTimer m_dragLetGoTimer;
    bool m_isScrubbing = false;
    double m_lastNewPositionInSec = 0;
};

} // namespace tunedeck
