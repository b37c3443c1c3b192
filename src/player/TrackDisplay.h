// SPDX-License-Identifier: MIT
#pragma once

#include "music/MusicTypes.h"

#include <QMetaObject>
#include <QObject>
#include <QString>
#include <QStringList>

namespace tunedeck {

class Appearance;
class FollowablePlayers;
class LcdView;
class MusicConnector;
struct MusicConnectorTrack;

/// Shows on the LCD what plays: the track's texts, or why there are none, and the times. A live stream has neither
/// times nor progress, so the live marker takes their place. While Music is silent, that comes first, and the track
/// second as one text. The tooltip says for which player the program waits. The progress itself is the
/// ViewController's: it belongs to the user while the user drags the knob.
class TrackDisplay : public QObject {
    Q_OBJECT

public:
    /// Follows the connector's times and the appearance. All arguments must outlive this object.
    TrackDisplay(const MusicConnector &musicConnector, const FollowablePlayers &players, const Appearance &appearance,
        LcdView &lcd, QObject *parent = nullptr);

    /// Shows the times or the live marker, as a feed of this type has them, and a fallback text where nothing plays.
    void showFeedType(FeedType feedType);
    /// Shows the texts that `track` has. Where nothing plays it shows the fallback text and returns false.
    bool showTrack(const MusicConnectorTrack &track);
    void clear();
    /// Shows the remaining time on the right, or else the total time.
    void setRemainingTimeShown(bool isShown);

private:
    void followTimes();
    void followAppearance(const Appearance &appearance);
    /// Returns false, and shows nothing, where Music plays.
    bool showFallbackText(FeedType feedType);
    void showTexts();
    void updateToolTip();

    const MusicConnector &m_musicConnector;
    const FollowablePlayers &m_players;
    LcdView &m_lcd;
    QStringList m_trackTexts;
    QString m_fallbackText; ///< in place of the track's; empty while Music plays
    QMetaObject::Connection m_secondaryTimeBinding;
};

} // namespace tunedeck
