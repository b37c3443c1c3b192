// SPDX-License-Identifier: MIT
#include "drawer/PlaylistViewController.h"

#include "drawer/PlaylistView.h"
#include "music/MusicApplication.h"
#include "music/MusicConnector.h"
#include "music/isMenuItemEnabled.h"
#include "music/obstacles.h"
#include "music/statusTexts.h"
#include "platform/FatalError.h"
#include "skin/views/MetalButton.h"
#include "skin/views/MetalPopupButton.h"
#include "widgets/names.h"
#include "widgets/setUsable.h"

#include <QAction>
#include <QSignalBlocker>

#include <algorithm>
#include <initializer_list>

namespace tunedeck {

namespace {
constexpr int noPlaylist = -1;

RepeatMode following(RepeatMode mode)
{
    switch (mode) {
    case RepeatMode::off:
        return RepeatMode::all;
    case RepeatMode::all:
        return RepeatMode::one;
    case RepeatMode::one:
        return RepeatMode::off;
    }
    fatalError("Impossible repeat mode");
}

QString imageOf(RepeatMode mode)
{
    switch (mode) {
    case RepeatMode::off:
        return QStringLiteral("repeat_off");
    case RepeatMode::one:
        return QStringLiteral("repeat_one");
    case RepeatMode::all:
        return QStringLiteral("repeat_all");
    }
    fatalError("Impossible repeat mode");
}

QString nameOf(RepeatMode mode)
{
    switch (mode) {
    case RepeatMode::off:
        return PlaylistViewController::tr("Repeat: off", "For accessibility: the repeat button");
    case RepeatMode::one:
        return PlaylistViewController::tr("Repeat: one", "For accessibility: the repeat button");
    case RepeatMode::all:
        return PlaylistViewController::tr("Repeat: all", "For accessibility: the repeat button");
    }
    fatalError("Impossible repeat mode");
}

void setState(MetalButton &button, const QString &image, const QString &name, const QString &obstacle)
{
    button.setImage(image);
    updateAccessibleName(button, name);
    setUsable(button, obstacle, name);
}
} // namespace

PlaylistViewController::PlaylistViewController(MusicConnector &musicConnector, PlaylistView &view, QObject *parent)
    : QObject(parent)
    , m_musicConnector(musicConnector)
    , m_view(view)
    , m_doneToolTip(view.doneButton().toolTip())
{
    connect(&m_view.shuffleButton(), &MetalButton::clicked, this, &PlaylistViewController::shuffleButtonPressed);
    connect(&m_view.repeatButton(), &MetalButton::clicked, this, &PlaylistViewController::repeatButtonPressed);
    connect(&m_view.doneButton(), &MetalButton::clicked, this, &PlaylistViewController::doneButtonClicked);
    connect(&m_view.playlistPicker(), &MetalPopupButton::activated, this, &PlaylistViewController::selectPlaylist);

    connect(&m_musicConnector, &MusicConnector::shuffleEnabledChanged, this, &PlaylistViewController::refreshButtons);
    connect(&m_musicConnector, &MusicConnector::repeatModeChanged, this, &PlaylistViewController::refreshButtons);
    connect(&m_musicConnector, &MusicConnector::isMusicAppRunningChanged, this, &PlaylistViewController::showPlaylists);
    connect(&m_musicConnector, &MusicConnector::playlistOptionsChanged, this, &PlaylistViewController::showPlaylists);
    connect(&m_musicConnector, &MusicConnector::selectedPlaylistChanged, this,
        &PlaylistViewController::showSelectedPlaylist);
    const MusicApplication &music = m_musicConnector.musicApp();
    connect(&music, &MusicApplication::respondingDidChange, this, &PlaylistViewController::refreshControls);
    connect(&music, &MusicApplication::controlsDidChange, this, &PlaylistViewController::refreshControls);
    connect(&music, &MusicApplication::playerDidChange, this, &PlaylistViewController::refreshControls);
    m_view.playlistPicker().setModel(&m_playlistNames);
    showPlaylists();
    refreshButtons();
}

bool PlaylistViewController::validateMenuItem(const QAction &item) const
{
    return isMenuItemEnabled(item.objectName(), m_musicConnector);
}

void PlaylistViewController::shuffleButtonPressed()
{
    // A player that does not report whether it shuffles is asked to shuffle.
    m_musicConnector.setShuffle(!m_musicConnector.musicApp().shuffleEnabled().value_or(false));
}

void PlaylistViewController::repeatButtonPressed()
{
    m_shownRepeatMode = following(m_shownRepeatMode);
    m_musicConnector.setRepeat(m_shownRepeatMode);
}

void PlaylistViewController::doneButtonClicked()
{
    m_musicConnector.playSelectedPlaylist();
}

void PlaylistViewController::showPlaylists()
{
    QStringList names;
    for (const PlaylistOption &option : m_musicConnector.playlistOptions()) {
        names.append(option.name);
    }
    {
        // The whole list at once: adding thousands of entries one by one is slow.
        const QSignalBlocker blocker(m_view.playlistPicker());
        m_playlistNames.setNames(names, whatIsMissing());
    }
    showSelectedPlaylist();
}

QString PlaylistViewController::whatIsMissing() const
{
    return m_musicConnector.hasMorePlaylists()
        ? tr("There are more playlists than these", "After the last playlist, and the playlist picker's tooltip")
        : QString();
}

QString PlaylistViewController::whyEmpty() const
{
    if (!m_musicConnector.isMusicAppRunning()) {
        return musicIsNotOpenText();
    }
    switch (m_musicConnector.playlistSource()) {
    case PlaylistSource::music:
        return tr("The player has no playlists", "Tooltip of the empty playlist picker");
    case PlaylistSource::files:
        return tr("There are no playlist files (.m3u, .m3u8, .pls, .xspf) in your music folder",
            "Tooltip of the empty playlist picker");
    case PlaylistSource::unknown:
        return tr("Waiting for the player's playlists", "Tooltip of the empty playlist picker");
    case PlaylistSource::none:
        return tr(
            "This player neither offers playlists nor opens playlist files", "Tooltip of the empty playlist picker");
    }
    fatalError("Impossible source of playlists");
}

void PlaylistViewController::showSelectedPlaylist()
{
    const QList<PlaylistOption> &options = m_musicConnector.playlistOptions();
    const std::optional<PlaylistOption> &selected = m_musicConnector.selectedPlaylist();
    const auto found = selected ? std::find(options.begin(), options.end(), *selected) : options.end();
    const QSignalBlocker blocker(m_view.playlistPicker());
    m_view.playlistPicker().setCurrentIndex(
        found == options.end() ? noPlaylist : static_cast<int>(found - options.begin()));
    m_view.playlistPicker().update();
    enablePlaylistControls();
}

void PlaylistViewController::enablePlaylistControls()
{
    QString obstacle = obstacleToCommands(m_musicConnector.musicApp());
    m_view.doneButton().setEnabled(obstacle.isEmpty() && m_musicConnector.selectedPlaylist());
    explain(m_view.doneButton(), obstacle, m_doneToolTip);
    if (obstacle.isEmpty() && m_musicConnector.playlistOptions().isEmpty()) {
        obstacle = whyEmpty();
    }
    m_view.playlistPicker().setEnabled(obstacle.isEmpty());
    explain(m_view.playlistPicker(), obstacle.isEmpty() ? whatIsMissing() : obstacle,
        tr("Choose a playlist", "Tooltip of the playlist picker"));
}

void PlaylistViewController::selectPlaylist(int index)
{
    const QList<PlaylistOption> &options = m_musicConnector.playlistOptions();
    if (index >= 0 && index < options.size()) {
        m_musicConnector.setSelectedPlaylist(options.at(index));
    }
}

/// Enables the controls that Music answers, and disables the others.
void PlaylistViewController::refreshControls()
{
    if (!obstacleToCommands(m_musicConnector.musicApp()).isEmpty()) {
        for (QWidget *control : std::initializer_list<QWidget *>{
                 &m_view.playlistPicker(), &m_view.doneButton(), &m_view.shuffleButton(), &m_view.repeatButton()}) {
            m_focus.take(*control);
        }
    }
    enablePlaylistControls();
    refreshButtons();
    m_focus.giveBack();
}

void PlaylistViewController::refreshButtons()
{
    const MusicApplication &music = m_musicConnector.musicApp();
    const bool isShuffled = music.shuffleEnabled().value_or(false);
    setState(m_view.shuffleButton(), isShuffled ? QStringLiteral("shuffle_on") : QStringLiteral("shuffle_off"),
        isShuffled ? tr("Shuffle: on", "For accessibility: the shuffle button")
                   : tr("Shuffle: off", "For accessibility: the shuffle button"),
        obstacleTo(MusicControl::shuffle, music));
    m_shownRepeatMode = m_musicConnector.repeatMode();
    setState(m_view.repeatButton(), imageOf(m_shownRepeatMode), nameOf(m_shownRepeatMode),
        obstacleTo(MusicControl::repeat, music));
}

} // namespace tunedeck
