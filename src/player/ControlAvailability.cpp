// SPDX-License-Identifier: MIT
#include "player/ControlAvailability.h"

#include "music/MusicApplication.h"
#include "music/MusicConnector.h"
#include "music/obstacles.h"
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
    const QString obstacle = obstacleTo(MusicControl::volume, m_musicConnector.musicApp());
    if (!obstacle.isEmpty()) {
        for (QWidget *control : std::initializer_list<QWidget *>{
                 &m_view.volumeMinButton(), &m_view.volumeSlider(), &m_view.volumeMaxButton()}) {
            moveKeyboardFrom(*control);
        }
    }
    setUsable(m_view.volumeMinButton(), obstacle, m_volumeMinToolTip);
    setUsable(m_view.volumeSlider(), obstacle, m_volumeToolTip);
    setUsable(m_view.volumeMaxButton(), obstacle, m_volumeMaxToolTip);
}

/// Moves the keyboard focus to play/pause. Qt would move it to the next control, whatever Space does there.
void ControlAvailability::moveKeyboardFrom(const QWidget &control)
{
    if (control.hasFocus()) {
        m_view.playPauseButton().setFocus(Qt::TabFocusReason);
    }
}

} // namespace tunedeck
