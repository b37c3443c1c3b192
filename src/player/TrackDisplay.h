// SPDX-License-Identifier: MIT
#pragma once

#include "music/MusicTypes.h"

#include <QObject>

namespace tunedeck {

class Appearance;
class LcdView;
class MusicConnector;
struct MusicConnectorTrack;

/// Shows on the LCD what plays: the track's texts, or why there are none, and the times. A live stream has neither
/// times nor progress, so the live marker takes their place. The progress itself is the ViewController's: it belongs to
/// the user while the user drags the knob.
class TrackDisplay : public QObject {
    Q_OBJECT

public:
    /// Follows the connector's times and the appearance. All arguments must outlive this object.
    TrackDisplay(
        const MusicConnector &musicConnector, const Appearance &appearance, LcdView &lcd, QObject *parent = nullptr);

    /// Shows the controls that a feed of this type has, and a fallback text where nothing plays.
    void showFeedType(FeedType feedType);
    /// Shows the texts that `track` has. Where nothing plays it shows the fallback text and returns false.
    bool showTrack(const MusicConnectorTrack &track);
    void clear();
    /// Shows the remaining time on the right, or else the total time.
    void setRemainingTimeShown(bool isShown);

private:
    void followTimes();
    void followAppearance(const Appearance &appearance);
    void followResponding();
    /// Returns false, and shows nothing, where Music plays.
    bool showFallbackText(FeedType feedType);

    const MusicConnector &m_musicConnector;
    LcdView &m_lcd;
    QMetaObject::Connection m_secondaryTimeBinding;
};

} // namespace tunedeck
