// SPDX-License-Identifier: MIT
#include "player/ViewController.h"

#include "music/MenuItemIdentifier.h"
#include "music/MusicApplication.h"
#include "music/isMenuItemEnabled.h"
#include "platform/Appearance.h"
#include "platform/UserDefaults.h"
#include "platform/WindowActivation.h"
#include "player/DrawerHost.h"
#include "player/LcdView.h"
#include "player/PlayerView.h"
#include "player/SpeakerButton.h"
#include "skin/views/ClassicAudioProgressSlider.h"
#include "skin/views/DrawerBackground.h"
#include "skin/views/PlainButton.h"
#include "skin/views/PlayerButton.h"
#include "skin/views/TunedeckPlayerButton.h"
#include "skin/views/VolumeSlider.h"
#include "skin/views/WindowButtonsView.h"
#include "skin/views/WindowControlButton.h"
#include "widgets/names.h"

#include <QAction>
#include <QEvent>
#include <QToolTip>
#include <QWidget>
#include <QWindow>

#include <chrono>

namespace tunedeck {

namespace {
using namespace std::chrono_literals;

constexpr auto dragLetGoDelay = 333ms;
constexpr auto tooltipHoldOff = 1s;
constexpr double silence = 0;
constexpr double fullVolume = 100;
} // namespace

ViewController::ViewController(const Environment &environment, PlayerView &view, QObject *parent)
    : QObject(parent)
    , m_musicConnector(environment.musicConnector)
    , m_defaults(environment.defaults)
    , m_appearance(environment.appearance)
    , m_drawerHost(environment.drawerHost)
    , m_view(view)
    , m_display(m_musicConnector, environment.players, m_appearance, m_view.lcd())
    , m_availability(m_musicConnector, m_view)
    , m_timeLabelMenu(m_view.lcd().secondaryTimeLabel(), [this](QAction &item) { return validateMenuItem(item); })
{
    connect(&environment.windowActivation, &WindowActivation::windowDidBecomeMain, this,
        &ViewController::updateLCDForFeedType);
    setUpWindowButtons();
    setUpTransport();
    setUpProgressSlider();
    observeConnector();
    bindVolume();
    bindRemainingTime();
    observeDockTileSettings();
    m_view.installEventFilter(this);
    connect(
        &m_timeLabelMenu, &QMenu::triggered, this, [this](const QAction *item) { timeLabelMenuItemSelected(*item); });
    observeExpansion();
    m_musicConnector.setDelegate(this);
    updateLCDForFeedType();
}

ViewController::~ViewController()
{
    m_musicConnector.setDelegate(nullptr);
    m_view.volumeSlider().setScrollEventsDelegate(nullptr);
}

void ViewController::setCurrentTrack(const std::optional<MusicConnectorTrack> &track)
{
    m_currentTrack = track;
    if (m_currentTrack) {
        m_lastNewPositionInSec = 0;
        updateTrackInfo(*m_currentTrack);
    }
    Q_EMIT currentTrackChanged();
}

void ViewController::setRemainingTimeEnabled(bool enabled)
{
    m_remainingTimeEnabled = enabled;
    updateSecondaryTimeLabel();
    Q_EMIT remainingTimeEnabledChanged(enabled);
}

QString ViewController::dockTileImage(FourCharCode state, FeedType feedType) const
{
    QString name = QStringLiteral("DockTile_Pause");
    if (PlayerState::isIdle(state)) {
        name = QStringLiteral("DockTile_Play");
    } else if (feedType == FeedType::liveStream) {
        name = QStringLiteral("DockTile_Stop");
    }
    const bool followsAppearance = !m_defaults.boolForKey(SettingsKey::appearanceClassic)
        && m_defaults.boolForKey(SettingsKey::appearanceUpdatesDockIcon);
    if (followsAppearance && isDark(m_appearance.effectiveAppearance())) {
        name += QStringLiteral("-Dark");
    }
    return name;
}

bool ViewController::validateMenuItem(QAction &item) const
{
    const QString identifier = item.objectName();
    if (identifier == MenuItemIdentifier::totalTime) {
        item.setChecked(!m_defaults.boolForKey(SettingsKey::remainingTimeEnabled));
        return true;
    }
    if (identifier == MenuItemIdentifier::remainingTime) {
        item.setChecked(m_defaults.boolForKey(SettingsKey::remainingTimeEnabled));
        return true;
    }
    return isMenuItemEnabled(identifier, m_musicConnector);
}

void ViewController::playerStateDidChange(FourCharCode state)
{
    updatePlayPauseGlyph(state);
    Q_EMIT playPauseTitleChanged(playPauseTitle(state));
    updateDockTile(state);
    // The state that the connector holds has the last word.
    updateDockTile(m_musicConnector.currentState());
}

QString ViewController::playPauseTitle(FourCharCode state) const
{
    if (PlayerState::isIdle(state)) {
        return tr("Play", "For UI labels: Play");
    }
    return m_musicConnector.feedType() == FeedType::liveStream ? tr("Stop", "For UI labels: Stop")
                                                               : tr("Pause", "For UI labels: Pause");
}

void ViewController::adjustVolume(double delta)
{
    m_musicConnector.adjustVolume(delta);
}

void ViewController::volumeSliderDidScroll()
{
    m_view.volumeSlider().setToolTip(QString());
    QToolTip::hideText();
    m_tooltipsTimer.start();
}

bool ViewController::eventFilter(QObject *watched, QEvent *event)
{
    if (event->type() == QEvent::Enter || event->type() == QEvent::Leave) {
        setMouseIsHovering(false);
    }
    return QObject::eventFilter(watched, event);
}

void ViewController::closeWindow()
{
    m_view.window()->close();
}

void ViewController::toggleDrawer()
{
    if (!m_drawerHost.isExpanded()) {
        m_view.drawerContainerView().show();
        m_musicConnector.loadPlaylists();
    }
    m_drawerHost.setExpanded(!m_drawerHost.isExpanded());
}

void ViewController::trackingDidChange()
{
    scrubToSliderPosition();
}

void ViewController::volumeSliderAdjusted(double percent)
{
    m_musicConnector.setVolume(percent);
}

void ViewController::volMinMaxSet(const QWidget &sender)
{
    if (&sender == &m_view.volumeMinButton()) {
        m_musicConnector.setVolume(silence);
    }
    if (&sender == &m_view.volumeMaxButton()) {
        m_musicConnector.setVolume(fullVolume);
    }
}

void ViewController::setUpWindowButtons()
{
    m_view.closeButton().setControlStyle(WindowControlButtonStyle::close);
    m_view.minimizeButton().setControlStyle(WindowControlButtonStyle::minimize);
    m_view.maximizeButton().setControlStyle(WindowControlButtonStyle::maximize);
    connect(&m_view.closeButton(), &QAbstractButton::clicked, this, &ViewController::closeWindow);
    connect(&m_view.windowButtonsView(), &WindowButtonsView::mouseHoveringChanged, this, [this](bool isHovering) {
        m_view.closeButton().setMouseHovering(isHovering);
        m_view.maximizeButton().setMouseHovering(isHovering);
        m_view.minimizeButton().setMouseHovering(isHovering);
    });
}

void ViewController::setUpTransport()
{
    connect(&m_view.lcd().infoButton(), &QAbstractButton::clicked, this, &ViewController::toggleDrawer);
    connect(&m_view.backwardButton(), &QAbstractButton::clicked, this, &ViewController::prevPressed);
    connect(&m_view.playPauseButton(), &QAbstractButton::clicked, this, &ViewController::playPausePressed);
    connect(&m_view.forwardButton(), &QAbstractButton::clicked, this, &ViewController::nextPressed);
    updatePlayPauseGlyph(m_musicConnector.currentState());
    m_view.backwardButton().setControlGlyph(PlayerButtonTypes::backward);
    m_view.forwardButton().setControlGlyph(PlayerButtonTypes::forward);
    seekWhileHeld(m_view.backwardButton(), &MusicApplication::rewind);
    seekWhileHeld(m_view.forwardButton(), &MusicApplication::fastForward);
}

void ViewController::seekWhileHeld(HoldableButton &button, bool (MusicApplication::*seek)())
{
    button.setHoldButton(true);
    // A plain click reports that the button is not held, too. Music then resumes without a seek and ignores that.
    connect(&button, &HoldableButton::isIntentionallyHeldChanged, this, [this, seek](bool isHeld) {
        MusicApplication &music = m_musicConnector.musicApp();
        if (isHeld) {
            (music.*seek)();
        } else {
            music.resume();
        }
    });
}

void ViewController::setUpProgressSlider()
{
    const PercentSlider &progress = m_view.lcd().trackProgressSlider();
    connect(&progress, &PercentSlider::adjusted, this, &ViewController::trackingDidChange);
    m_dragLetGoTimer.setObjectName(QStringLiteral("dragLetGoTimer"));
    m_dragLetGoTimer.setSingleShot(true);
    m_dragLetGoTimer.setInterval(dragLetGoDelay);
    connect(&m_dragLetGoTimer, &QTimer::timeout, this, [this] {
        m_isScrubbing = false;
        // The next update never comes while the player is paused, and the last one was passed over if the player quit
        // while the knob was dragged. The knob must not stay where the player is not.
        m_musicConnector.updatePlayerProgressInfo();
        m_view.lcd().trackProgressSlider().setDoubleValue(m_musicConnector.trackProgress());
    });
}

void ViewController::observeConnector()
{
    connect(&m_musicConnector, &MusicConnector::trackProgressChanged, this, [this](double progress) {
        if (!m_isScrubbing) {
            m_view.lcd().trackProgressSlider().setDoubleValue(progress);
        }
    });
    connect(&m_musicConnector, &MusicConnector::feedTypeChanged, this, &ViewController::updateLCDForFeedType);
    connect(&m_musicConnector, &MusicConnector::isMusicAppRunningChanged, this, &ViewController::updateLCDForFeedType);
    connect(&m_musicConnector, &MusicConnector::currentTrackChanged, this,
        [this] { setCurrentTrack(m_musicConnector.currentTrack()); });
    setCurrentTrack(m_musicConnector.currentTrack());
    connect(&m_musicConnector, &MusicConnector::totalFormattedTimeChanged, this, &ViewController::durationDidChange);
    durationDidChange();
}

void ViewController::bindVolume()
{
    VolumeSlider &slider = m_view.volumeSlider();
    connect(&m_musicConnector, &MusicConnector::soundVolumeChanged, &slider, &VolumeSlider::setDoubleValue);
    slider.setDoubleValue(m_musicConnector.soundVolume());
    connect(&slider, &VolumeSlider::adjusted, this, &ViewController::volumeSliderAdjusted);
    // A drag ends with its player: the next one may be much quieter than the place of the pointer says.
    connect(&m_musicConnector.musicApp(), &MusicApplication::didTerminate, &slider,
        [&slider] { slider.setSliderDown(false); });
    for (const SpeakerButton *speaker : {&m_view.volumeMinButton(), &m_view.volumeMaxButton()}) {
        connect(speaker, &QAbstractButton::clicked, this, [this, speaker] { volMinMaxSet(*speaker); });
    }
    slider.setScrollEventsDelegate(this);
    m_tooltipsTimer.setObjectName(QStringLiteral("tooltipsTimer"));
    m_tooltipsTimer.setSingleShot(true);
    m_tooltipsTimer.setInterval(tooltipHoldOff);
    connect(&m_tooltipsTimer, &QTimer::timeout, &m_availability, &ControlAvailability::updateVolume);
    m_defaults.bind(SettingsKey::volumeButtonsHidden, this, [this](bool hidden) {
        m_view.volumeMinButton().setHidden(hidden);
        m_view.volumeMaxButton().setHidden(hidden);
    });
}

void ViewController::bindRemainingTime()
{
    m_defaults.bind(
        SettingsKey::remainingTimeEnabled, this, [this](bool enabled) { setRemainingTimeEnabled(enabled); });
}

void ViewController::observeDockTileSettings()
{
    connect(&m_appearance, &Appearance::effectiveAppearanceChanged, this,
        [this] { updateDockTile(m_musicConnector.currentState()); });
    connect(&m_defaults, &UserDefaults::appearanceUpdatesDockIconChanged, this,
        [this] { updateDockTile(m_musicConnector.currentState()); });
}

void ViewController::observeExpansion()
{
    const auto hideWhenCollapsed = [this](bool expanded) {
        if (!expanded) {
            moveKeyboardFromDrawer();
            m_view.drawerContainerView().hide();
        }
    };
    connect(&m_drawerHost, &DrawerHost::isExpandedChanged, this, hideWhenCollapsed);
    hideWhenCollapsed(m_drawerHost.isExpanded());
}

/// Qt would move the keyboard focus to the next control, which closes the window.
void ViewController::moveKeyboardFromDrawer()
{
    const QWidget *focused = m_view.window()->focusWidget();
    if (focused && m_view.drawerContainerView().isAncestorOf(focused)) {
        m_view.lcd().infoButton().setFocus(Qt::TabFocusReason);
    }
}

void ViewController::updateLCDForFeedType()
{
    const FeedType feedType = m_musicConnector.feedType();
    // The connector reports a stopped feed before it has the matching player state.
    const FourCharCode state = m_musicConnector.musicApp().playerState().value_or(m_musicConnector.currentState());
    if (feedType == FeedType::unknown || (feedType == FeedType::stopped && state == PlayerState::stopped)) {
        clearTrackInfo();
    }
    // This first: the keyboard leaves a slider that is then hidden.
    m_availability.update();
    m_display.showFeedType(feedType);
}

void ViewController::clearTrackInfo()
{
    m_display.clear();
    Q_EMIT currentTrackInfoChanged(std::nullopt);
}

void ViewController::updateTrackInfo(const MusicConnectorTrack &track)
{
    if (m_display.showTrack(track)) {
        Q_EMIT currentTrackInfoChanged(track);
    }
}

void ViewController::updateSecondaryTimeLabel()
{
    m_display.setRemainingTimeShown(m_remainingTimeEnabled);
}

void ViewController::updatePlayPauseGlyph(FourCharCode state)
{
    PlayerButton &button = m_view.playPauseButton();
    if (PlayerState::isIdle(state)) {
        button.setControlGlyph(PlayerButtonTypes::play);
    } else if (m_musicConnector.feedType() == FeedType::liveStream) {
        button.setControlGlyph(PlayerButtonTypes::stop);
    } else {
        button.setControlGlyph(PlayerButtonTypes::pause);
    }
    updateAccessibleName(button, playPauseTitle(state));
}

void ViewController::updateDockTile(FourCharCode state)
{
    Q_EMIT dockTileImageChanged(dockTileImage(state, m_musicConnector.feedType()));
}

void ViewController::timeLabelMenuItemSelected(const QAction &item)
{
    if (item.objectName() == MenuItemIdentifier::remainingTime) {
        m_defaults.setBool(SettingsKey::remainingTimeEnabled, true);
    } else if (item.objectName() == MenuItemIdentifier::totalTime) {
        m_defaults.setBool(SettingsKey::remainingTimeEnabled, false);
    }
}

void ViewController::setMouseIsHovering(bool isHovering)
{
    m_mouseIsHovering = isHovering;
    Q_EMIT mouseIsHoveringChanged(isHovering);
}

void ViewController::scrubToSliderPosition()
{
    m_dragLetGoTimer.start();
    m_isScrubbing = true;
    const double position = m_musicConnector.duration() * (m_view.lcd().trackProgressSlider().doubleValue() / 100);
    if (position == m_lastNewPositionInSec) {
        return;
    }
    m_lastNewPositionInSec = position;
    m_musicConnector.musicApp().setPlayerPosition(position);
    m_musicConnector.updatePlayerProgressInfo();
}

void ViewController::durationDidChange()
{
    const double duration = m_musicConnector.duration();
    m_view.lcd().trackProgressSlider().setStep(duration > 0 ? seekStepInSec / duration * 100 : 0);
}

} // namespace tunedeck
