// SPDX-License-Identifier: MIT
#include "player/ViewController.h"

#include "music/MenuItemIdentifier.h"
#include "music/MusicApplication.h"
#include "platform/Appearance.h"
#include "platform/UserDefaults.h"
#include "platform/WindowActivation.h"
#include "player/DrawerHost.h"
#include "player/LcdView.h"
#include "player/PlayerView.h"
#include "player/ScrollingMarqueeView.h"
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
#include <QLabel>
#include <QToolTip>
#include <QWindow>

#include <chrono>

namespace tunedeck {

namespace {
using namespace std::chrono_literals;

constexpr auto dragLetGoDelay = 333ms;
constexpr auto tooltipHoldOff = 1s;
/// What an arrow key on the progress slider seeks by.
constexpr double seekStepInSec = 5;
constexpr double silence = 0;
constexpr double fullVolume = 100;

QString sentenceCased(const QString &text)
{
    const QString lower = text.toLower();
    return lower.left(1).toUpper() + lower.mid(1);
}

bool isEmptyFeed(FeedType feedType)
{
    return feedType == FeedType::stopped || feedType == FeedType::unknown;
}
} // namespace

ViewController::ViewController(const Surroundings &surroundings, PlayerView &view, QObject *parent)
    : QObject(parent)
    , m_musicConnector(surroundings.musicConnector)
    , m_defaults(surroundings.defaults)
    , m_appearance(surroundings.appearance)
    , m_drawerHost(surroundings.drawerHost)
    , m_view(view)
{
    connect(&surroundings.windowActivation, &WindowActivation::windowDidBecomeMain, this,
        &ViewController::updateLCDForFeedType);
    setUpWindowButtons();
    setUpTransport();
    setUpProgressSlider();
    observeConnector();
    bindVolume();
    bindTimeLabels();
    observeAppearance();
    m_view.installEventFilter(this);
    buildTimeLabelMenu();
    observeExpansion();
    m_musicConnector.setDelegate(this);
    updateLCDForFeedType();
}

ViewController::~ViewController()
{
    m_musicConnector.setDelegate(nullptr);
    m_view.volumeSlider().setScrollEventsDelegate(nullptr);
}

const std::optional<MusicConnectorTrack> &ViewController::currentTrack() const
{
    return m_currentTrack;
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

bool ViewController::remainingTimeEnabled() const
{
    return m_remainingTimeEnabled;
}

void ViewController::setRemainingTimeEnabled(bool enabled)
{
    m_remainingTimeEnabled = enabled;
    updateSecondaryTimeLabel();
    Q_EMIT remainingTimeEnabledChanged(enabled);
}

bool ViewController::mouseIsHovering() const
{
    return m_mouseIsHovering;
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
    const bool isMusicAppRunning = m_musicConnector.isMusicAppRunning();
    if (identifier == MenuItemIdentifier::playPause || identifier == MenuItemIdentifier::volumeUp
        || identifier == MenuItemIdentifier::volumeDown) {
        return isMusicAppRunning;
    }
    if (identifier == MenuItemIdentifier::next || identifier == MenuItemIdentifier::previous) {
        return isMusicAppRunning && m_musicConnector.feedType() != FeedType::liveStream;
    }
    if (identifier == MenuItemIdentifier::openMusicApp || identifier == MenuItemIdentifier::closeWindow) {
        return true;
    }
    if (identifier == MenuItemIdentifier::totalTime) {
        item.setChecked(!m_defaults.boolForKey(SettingsKey::remainingTimeEnabled));
        return true;
    }
    if (identifier == MenuItemIdentifier::remainingTime) {
        item.setChecked(m_defaults.boolForKey(SettingsKey::remainingTimeEnabled));
        return true;
    }
    return false;
}

QMenu &ViewController::timeLabelMenu()
{
    return m_timeLabelMenu;
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
    // A plain click tells that the button is not held, too: it resumes what was never sought, which Music ignores.
    connect(&button, &HoldableButton::isIntentionallyHeldChanged, this, [this, seek](bool isHeld) {
        MusicApplication &music = m_musicConnector.musicApp();
        isHeld ? (music.*seek)() : music.resume();
    });
}

void ViewController::setUpProgressSlider()
{
    const PercentSlider &progress = m_view.lcd().trackProgressSlider();
    connect(&progress, &PercentSlider::adjusted, this, &ViewController::trackingDidChange);
    m_dragLetGoTimer.setObjectName(QStringLiteral("dragLetGoTimer"));
    m_dragLetGoTimer.setSingleShot(true);
    m_dragLetGoTimer.setInterval(dragLetGoDelay);
    connect(&m_dragLetGoTimer, &QTimer::timeout, this, [this] { m_isScrubbing = false; });
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

    connect(&m_musicConnector.musicApp(), &MusicApplication::respondingDidChange, this,
        &ViewController::tellWhetherMusicResponds);
    tellWhetherMusicResponds(m_musicConnector.musicApp().isResponding());
}

void ViewController::tellWhetherMusicResponds(bool isResponding)
{
    m_view.lcd().setToolTip(
        isResponding ? QString() : tr("Music is not responding", "Tooltip of the LCD while Music is frozen"));
}

void ViewController::bindVolume()
{
    VolumeSlider &slider = m_view.volumeSlider();
    connect(&m_musicConnector, &MusicConnector::soundVolumeChanged, &slider, &VolumeSlider::setDoubleValue);
    slider.setDoubleValue(m_musicConnector.soundVolume());
    connect(&slider, &VolumeSlider::adjusted, this, &ViewController::volumeSliderAdjusted);
    for (const PlainButton *speaker : {&m_view.volumeMinButton(), &m_view.volumeMaxButton()}) {
        connect(speaker, &QAbstractButton::clicked, this, [this, speaker] { volMinMaxSet(*speaker); });
    }
    slider.setScrollEventsDelegate(this);
    m_volumeSliderTooltip = slider.toolTip();
    m_tooltipsTimer.setObjectName(QStringLiteral("tooltipsTimer"));
    m_tooltipsTimer.setSingleShot(true);
    m_tooltipsTimer.setInterval(tooltipHoldOff);
    connect(&m_tooltipsTimer, &QTimer::timeout, &slider, [this, &slider] { slider.setToolTip(m_volumeSliderTooltip); });
    m_defaults.bind(SettingsKey::volumeButtonsHidden, this, [this](bool hidden) {
        m_view.volumeMinButton().setHidden(hidden);
        m_view.volumeMaxButton().setHidden(hidden);
    });
}

void ViewController::bindTimeLabels()
{
    QLabel &elapsed = m_view.lcd().primaryTimeLabel();
    connect(&m_musicConnector, &MusicConnector::elapsedFormattedTimeChanged, &elapsed, &QLabel::setText);
    elapsed.setText(m_musicConnector.elapsedFormattedTime());
    elapsed.setToolTip(sentenceCased(tr("Elapsed Time", "For UI labels: Elapsed Time")));
    m_defaults.bind(
        SettingsKey::remainingTimeEnabled, this, [this](bool enabled) { setRemainingTimeEnabled(enabled); });
}

void ViewController::observeAppearance()
{
    ScrollingMarqueeView &label = m_view.lcd().trackInfoLabel();
    label.setMotionReduced(m_appearance.isMotionReduced());
    connect(&m_appearance, &Appearance::motionReducedChanged, &label, &ScrollingMarqueeView::setMotionReduced);
    label.setDark(isDark(m_appearance.effectiveAppearance()));
    connect(&m_appearance, &Appearance::effectiveAppearanceChanged, this, [this](AppearanceName name) {
        m_view.lcd().trackInfoLabel().setDark(isDark(name));
        updateDockTile(m_musicConnector.currentState());
    });
    connect(&m_defaults, &UserDefaults::appearanceUpdatesDockIconChanged, this,
        [this] { updateDockTile(m_musicConnector.currentState()); });
}

void ViewController::buildTimeLabelMenu()
{
    m_timeLabelMenu.setTitle(tr("Menu", "Title of the time label's context menu"));
    QAction *remaining = m_timeLabelMenu.addAction(tr("Remaining Time", "For UI labels: Remaining Time"));
    remaining->setObjectName(MenuItemIdentifier::remainingTime);
    QAction *total = m_timeLabelMenu.addAction(tr("Duration", "For UI labels: Duration"));
    total->setObjectName(MenuItemIdentifier::totalTime);
    for (QAction *item : {remaining, total}) {
        item->setCheckable(true);
        connect(item, &QAction::triggered, this, [this, item] { timeLabelMenuItemSelected(*item); });
    }
    connect(&m_timeLabelMenu, &QMenu::aboutToShow, this, [this, remaining, total] {
        for (QAction *item : {remaining, total}) {
            item->setEnabled(validateMenuItem(*item));
        }
    });

    QLabel &label = m_view.lcd().secondaryTimeLabel();
    label.setContextMenuPolicy(Qt::CustomContextMenu);
    connect(&label, &QLabel::customContextMenuRequested, this,
        [this, &label](QPoint position) { m_timeLabelMenu.popup(label.mapToGlobal(position)); });
}

void ViewController::observeExpansion()
{
    const auto hideWhenCollapsed = [this](bool expanded) {
        if (!expanded) {
            m_view.drawerContainerView().hide();
        }
    };
    connect(&m_drawerHost, &DrawerHost::isExpandedChanged, this, hideWhenCollapsed);
    hideWhenCollapsed(m_drawerHost.isExpanded());
}

void ViewController::updateLCDForFeedType()
{
    const FeedType feedType = m_musicConnector.feedType();
    // The connector announces that the feed has stopped before it holds the state that goes with it.
    const FourCharCode state = m_musicConnector.musicApp().playerState().value_or(m_musicConnector.currentState());
    if (feedType == FeedType::unknown || (feedType == FeedType::stopped && state == PlayerState::stopped)) {
        clearTrackInfo();
    }
    showControlsForFeedType(feedType);
    showFallbackText(feedType);
    m_view.playPauseButton().setToolTip(feedType == FeedType::liveStream
            ? tr("Play or stop playing live audio", "For UI labels: Play or stop playing live audio")
            : tr("Play or pause the current track", "For UI labels: Play or pause the current track"));
    if (isEmptyFeed(feedType)) {
        moveKeyboardFrom(m_view.lcd().trackProgressSlider());
    }
    m_view.lcd().trackProgressSlider().setEnabled(!isEmptyFeed(feedType));
}

/// The toolkit would move it to the control that comes next, whatever the next press of Space then does.
void ViewController::moveKeyboardFrom(const QWidget &control)
{
    if (control.hasFocus()) {
        m_view.playPauseButton().setFocus(Qt::TabFocusReason);
    }
}

void ViewController::showControlsForFeedType(FeedType feedType)
{
    const bool isLive = feedType == FeedType::liveStream;
    LcdView &lcd = m_view.lcd();
    if (isLive) {
        moveKeyboardFrom(lcd.trackProgressSlider());
        moveKeyboardFrom(m_view.backwardButton());
        moveKeyboardFrom(m_view.forwardButton());
    }
    lcd.isLiveLabel().setVisible(isLive);
    lcd.trackProgressSlider().setHidden(isLive);
    lcd.primaryTimeLabel().setHidden(isLive);
    lcd.secondaryTimeLabel().setHidden(isLive);
    m_view.backwardButton().setEnabled(!isLive);
    m_view.forwardButton().setEnabled(!isLive);
}

void ViewController::showFallbackText(FeedType feedType)
{
    ScrollingMarqueeView &label = m_view.lcd().trackInfoLabel();
    if (!m_musicConnector.isMusicAppRunning()) {
        label.setDisplayStrings({tr("Music is not open", "'Music is not open' displayed in LCD")});
    } else if (isEmptyFeed(feedType)) {
        label.setDisplayStrings({tr("No Song", "'No Song' displayed in LCD")});
    }
}

void ViewController::clearTrackInfo()
{
    m_view.lcd().trackInfoLabel().setDisplayStrings({});
    Q_EMIT currentTrackInfoChanged(std::nullopt);
}

void ViewController::updateTrackInfo(const MusicConnectorTrack &track)
{
    const FeedType feedType = m_musicConnector.feedType();
    if (!m_musicConnector.isMusicAppRunning() || isEmptyFeed(feedType)) {
        showFallbackText(feedType);
        return;
    }
    QStringList strings;
    for (const std::optional<QString> &text : {track.trackName, track.artistName, track.albumName}) {
        if (text) {
            strings.append(*text);
        }
    }
    m_view.lcd().trackInfoLabel().setDisplayStrings(strings);
    Q_EMIT currentTrackInfoChanged(track);
}

void ViewController::updateSecondaryTimeLabel()
{
    QLabel &label = m_view.lcd().secondaryTimeLabel();
    disconnect(m_secondaryTimeBinding);
    if (m_remainingTimeEnabled) {
        m_secondaryTimeBinding =
            connect(&m_musicConnector, &MusicConnector::remainingFormattedTimeChanged, &label, &QLabel::setText);
        label.setText(m_musicConnector.remainingFormattedTime());
        label.setToolTip(sentenceCased(tr("Remaining Time", "For UI labels: Remaining Time")));
    } else {
        m_secondaryTimeBinding =
            connect(&m_musicConnector, &MusicConnector::totalFormattedTimeChanged, &label, &QLabel::setText);
        label.setText(m_musicConnector.totalFormattedTime());
        label.setToolTip(sentenceCased(tr("Duration", "For UI labels: Duration")));
    }
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
    // The remaining time begins with a sign.
    m_view.lcd().setLongestTime(u'-' + m_musicConnector.totalFormattedTime());
}

} // namespace tunedeck
