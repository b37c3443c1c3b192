// SPDX-License-Identifier: MIT
#include "player/TrackDisplay.h"

#include "music/MusicApplication.h"
#include "music/MusicConnector.h"
#include "music/followChoices.h"
#include "music/obstacles.h"
#include "music/statusTexts.h"
#include "platform/Appearance.h"
#include "player/LcdView.h"
#include "player/ScrollingMarqueeView.h"
#include "player/TimeLabelMenu.h"
#include "skin/views/ClassicAudioProgressSlider.h"

#include <QLabel>
#include <QTextDocument>

namespace tunedeck {

namespace {
QString sentenceCased(const QString &text)
{
    const QString lower = text.toLower();
    return lower.left(1).toUpper() + lower.mid(1);
}

QString asOneText(QStringList texts)
{
    texts.removeAll(QString());
    return texts.join(QStringLiteral(" – "));
}
} // namespace

TrackDisplay::TrackDisplay(const MusicConnector &musicConnector, const FollowablePlayers &players,
    const Appearance &appearance, LcdView &lcd, QObject *parent)
    : QObject(parent)
    , m_musicConnector(musicConnector)
    , m_players(players)
    , m_lcd(lcd)
{
    followTimes();
    followAppearance(appearance);
    const MusicApplication &music = m_musicConnector.musicApp();
    connect(&music, &MusicApplication::respondingDidChange, this, &TrackDisplay::showTexts);
    connect(&music, &MusicApplication::playerDidChange, this, &TrackDisplay::showTexts);
    connect(&players, &FollowablePlayers::followablePlayersChanged, this, &TrackDisplay::updateToolTip);
    connect(&musicConnector, &MusicConnector::audioOutputNamesChanged, this, &TrackDisplay::updateToolTip);
    showTexts();
}

void TrackDisplay::showFeedType(FeedType feedType)
{
    const bool isLive = feedType == FeedType::liveStream;
    m_lcd.isLiveLabel().setVisible(isLive);
    m_lcd.trackProgressSlider().setHidden(isLive);
    m_lcd.primaryTimeLabel().setHidden(isLive);
    m_lcd.secondaryTimeLabel().setHidden(isLive);
    showFallbackText(feedType);
}

bool TrackDisplay::showTrack(const MusicConnectorTrack &track)
{
    if (showFallbackText(m_musicConnector.feedType())) {
        return false;
    }
    m_fallbackText.clear();
    m_trackTexts.clear();
    for (const std::optional<QString> &text : {track.trackName, track.artistName, track.albumName}) {
        if (text) {
            m_trackTexts.append(*text);
        }
    }
    showTexts();
    return true;
}

void TrackDisplay::clear()
{
    m_fallbackText.clear();
    m_trackTexts.clear();
    showTexts();
}

void TrackDisplay::setRemainingTimeShown(bool isShown)
{
    QLabel &label = m_lcd.secondaryTimeLabel();
    disconnect(m_secondaryTimeBinding);
    if (isShown) {
        m_secondaryTimeBinding = connect(
            &m_musicConnector, &MusicConnector::remainingFormattedTimeChanged, &m_lcd, &LcdView::setSecondaryTime);
        m_lcd.setSecondaryTime(m_musicConnector.remainingFormattedTime());
        label.setToolTip(sentenceCased(TimeLabelMenu::remainingTimeText()));
    } else {
        m_secondaryTimeBinding =
            connect(&m_musicConnector, &MusicConnector::totalFormattedTimeChanged, &m_lcd, &LcdView::setSecondaryTime);
        m_lcd.setSecondaryTime(m_musicConnector.totalFormattedTime());
        label.setToolTip(sentenceCased(TimeLabelMenu::totalTimeText()));
    }
}

void TrackDisplay::followTimes()
{
    QLabel &elapsed = m_lcd.primaryTimeLabel();
    connect(&m_musicConnector, &MusicConnector::elapsedFormattedTimeChanged, &m_lcd, &LcdView::setPrimaryTime);
    m_lcd.setPrimaryTime(m_musicConnector.elapsedFormattedTime());
    elapsed.setToolTip(sentenceCased(tr("Elapsed Time", "For UI labels: Elapsed Time")));

    const auto makeRoom = [this] {
        // The remaining time begins with a sign.
        m_lcd.setLongestTime(u'-' + m_musicConnector.totalFormattedTime());
    };
    connect(&m_musicConnector, &MusicConnector::totalFormattedTimeChanged, this, makeRoom);
    makeRoom();
}

void TrackDisplay::followAppearance(const Appearance &appearance)
{
    ScrollingMarqueeView &label = m_lcd.trackInfoLabel();
    label.setMotionReduced(appearance.isMotionReduced());
    connect(&appearance, &Appearance::motionReducedChanged, &label, &ScrollingMarqueeView::setMotionReduced);
    label.setDark(isDark(appearance.effectiveAppearance()));
    connect(&appearance, &Appearance::effectiveAppearanceChanged, &label,
        [&label](AppearanceName name) { label.setDark(isDark(name)); });
}

bool TrackDisplay::showFallbackText(FeedType feedType)
{
    if (!m_musicConnector.isMusicAppRunning()) {
        m_fallbackText = musicIsNotOpenText();
    } else if (isEmptyFeed(feedType)) {
        m_fallbackText = noSongText();
    } else {
        return false;
    }
    m_trackTexts.clear();
    showTexts();
    return true;
}

void TrackDisplay::showTexts()
{
    const QString silence = obstacleToCommands(m_musicConnector.musicApp());
    QStringList strings = m_fallbackText.isEmpty() ? m_trackTexts : QStringList{m_fallbackText};
    if (!silence.isEmpty()) {
        // The silence comes first, as a long track would take a while to scroll by.
        strings = {silence};
        if (!m_trackTexts.isEmpty()) {
            strings.append(asOneText(m_trackTexts));
        }
    }
    m_lcd.trackInfoLabel().setDisplayStrings(strings);
    updateToolTip();
}

void TrackDisplay::updateToolTip()
{
    const QString silence = obstacleToCommands(m_musicConnector.musicApp());
    QString toolTip = silence.isEmpty() ? waitingText(m_players) : silence;
    if (toolTip.isEmpty() && m_musicConnector.audioOutputNames()) {
        //: %1 is an output or several, such as "Headphones and Kitchen".
        toolTip = tr("Playing through %1", "Tooltip of the display").arg(*m_musicConnector.audioOutputNames());
    }
    // The desktop or a device names an output, perhaps with a "<".
    m_lcd.setToolTip(Qt::mightBeRichText(toolTip) ? Qt::convertFromPlainText(toolTip) : toolTip);
    // The silence is among the texts already.
    ScrollingMarqueeView &label = m_lcd.trackInfoLabel();
    if (const QString description = silence.isEmpty() ? toolTip : QString();
        label.accessibleDescription() != description) {
        label.setAccessibleDescription(description);
    }
}

} // namespace tunedeck
