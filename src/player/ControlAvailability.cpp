// SPDX-License-Identifier: MIT
#include "player/ControlAvailability.h"

#include "music/MusicApplication.h"
#include "music/MusicConnector.h"
#include "music/PlayerSound.h"
#include "music/obstacles.h"
#include "music/statusTexts.h"
#include "player/LcdView.h"
#include "player/PlayerView.h"
#include "player/SpeakerButton.h"
#include "skin/views/ClassicAudioProgressSlider.h"
#include "skin/views/PlayerButton.h"
#include "skin/views/TunedeckPlayerButton.h"
#include "skin/views/VolumeSlider.h"
#include "widgets/setUsable.h"

#include <initializer_list>

namespace tunedeck {

ControlAvailability::ControlAvailability(const MusicConnector &musicConnector, PlayerView &view, QObject *parent)
    : QObject(parent)
    , m_musicConnector(musicConnector)
    , m_view(view)
    , m_backwardToolTip(view.backwardButton().toolTip())
    , m_forwardToolTip(view.forwardButton().toolTip())
    , m_volumeMinToolTip(view.volumeMinButton().toolTip())
    , m_volumeToolTip(view.volumeSlider().toolTip())
    , m_volumeMaxToolTip(view.volumeMaxButton().toolTip())
{
    const MusicApplication &music = musicConnector.musicApp();
    connect(&music, &MusicApplication::respondingDidChange, this, &ControlAvailability::update);
    connect(&music, &MusicApplication::controlsDidChange, this, &ControlAvailability::update);
    connect(&music, &MusicApplication::playerDidChange, this, &ControlAvailability::update);
    connect(&music, &MusicApplication::soundDidChange, this, &ControlAvailability::updateVolume);
    update();
}

void ControlAvailability::update()
{
    const QString silence = obstacleToCommands(m_musicConnector.musicApp());
    if (!silence.isEmpty()) {
        for (QWidget *control : std::initializer_list<QWidget *>{&m_view.backwardButton(), &m_view.playPauseButton(),
                 &m_view.forwardButton(), &m_view.volumeMinButton(), &m_view.volumeSlider(), &m_view.volumeMaxButton(),
                 &m_view.lcd().trackProgressSlider()}) {
            m_focus.take(*control);
        }
    }
    updateTransport(silence);
    updateProgress();
    updateVolume();
    m_focus.giveBack();
}

void ControlAvailability::updateTransport(const QString &silence)
{
    const bool isLive = m_musicConnector.feedType() == FeedType::liveStream;
    setUsable(m_view.playPauseButton(), silence,
        isLive ? tr("Play or stop playing live audio", "For UI labels: Play or stop playing live audio")
               : tr("Play or pause the current track", "For UI labels: Play or pause the current track"));
    if (isLive && silence.isEmpty()) {
        moveKeyboardFrom(m_view.backwardButton());
        moveKeyboardFrom(m_view.forwardButton());
    }
    const QString obstacle = obstacleToOtherTracks(m_musicConnector);
    setUsable(m_view.backwardButton(), obstacle, m_backwardToolTip);
    setUsable(m_view.forwardButton(), obstacle, m_forwardToolTip);
}

void ControlAvailability::updateProgress()
{
    ClassicAudioProgressSlider &slider = m_view.lcd().trackProgressSlider();
    const FeedType feedType = m_musicConnector.feedType();
    const bool isEmpty = isEmptyFeed(feedType);
    const QString obstacle = isEmpty ? QString() : obstacleTo(MusicControl::position, m_musicConnector.musicApp());
    const bool isEnabled = !isEmpty && obstacle.isEmpty();
    if (!isEnabled || feedType == FeedType::liveStream) {
        moveKeyboardFrom(slider);
    }
    slider.setEnabled(isEnabled);
    explain(slider, obstacle, QString());
}

void ControlAvailability::updateVolume()
{
    const MusicApplication &music = m_musicConnector.musicApp();
    const QString obstacle = obstacleTo(MusicControl::volume, music);
    if (!obstacle.isEmpty()) {
        for (QWidget *control : std::initializer_list<QWidget *>{
                 &m_view.volumeMinButton(), &m_view.volumeSlider(), &m_view.volumeMaxButton()}) {
            moveKeyboardFrom(*control);
        }
    }
    const bool isMuted = music.isRunning() && music.sound() && music.sound()->state().isMuted;
    SpeakerButton &quiet = m_view.volumeMinButton();
    quiet.setSpeaker(isMuted ? SpeakerButton::Speaker::Muted : SpeakerButton::Speaker::Quiet);
    if (isMuted && obstacle.isEmpty()) {
        explain(quiet, tr("Muted – turn the volume up to hear it", "Tooltip of the quiet speaker"), m_volumeMinToolTip);
        quiet.setEnabled(true);
    } else {
        setUsable(quiet, obstacle, m_volumeMinToolTip);
    }
    setUsable(m_view.volumeSlider(), obstacle, volumeToolTip());
    setUsable(m_view.volumeMaxButton(), obstacle, m_volumeMaxToolTip);
}

/// Says whose volume it is, where it may be either.
QString ControlAvailability::volumeToolTip() const
{
    const MusicApplication &music = m_musicConnector.musicApp();
    if (!music.isRunning() || !music.sound()) {
        return m_volumeToolTip;
    }
    return music.isVolumeOfStreams()
        ? tr("Volume, set on the sound server", "Tooltip of the volume slider")
        //: %1 is the player.
        : tr("Volume, set in %1", "Tooltip of the volume slider").arg(playerNameText(music));
}

/// Moves the keyboard focus to play/pause. Qt would move it to the next control, whatever Space does there.
void ControlAvailability::moveKeyboardFrom(const QWidget &control)
{
    if (control.hasFocus()) {
        m_view.playPauseButton().setFocus(Qt::TabFocusReason);
    }
}

} // namespace tunedeck
