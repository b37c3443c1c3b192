// SPDX-License-Identifier: MIT
#pragma once

#include "widgets/FocusKeeper.h"

#include <QObject>
#include <QString>

namespace tunedeck {

class MusicConnector;
class PlayerView;

/// Enables those of the player's controls that Music answers now. The others are disabled, and their tooltips and their
/// descriptions for screen readers say why: Music is silent, plays a live stream, or does not take what they set.
class ControlAvailability : public QObject {
    Q_OBJECT

public:
    /// Follows Music's answers. The feed type and whether Music runs are followed by update() alone. Both arguments
    /// must outlive this object.
    ControlAvailability(const MusicConnector &musicConnector, PlayerView &view, QObject *parent = nullptr);

    void update();
    void updateVolume();

private:
    void updateTransport(const QString &silence);
    void updateProgress();
    [[nodiscard]] QString volumeToolTip() const;
    void moveKeyboardFrom(const QWidget &control);

    const MusicConnector &m_musicConnector;
    PlayerView &m_view;
    FocusKeeper m_focus;
    QString m_backwardToolTip;
    QString m_forwardToolTip;
    QString m_volumeMinToolTip;
    QString m_volumeToolTip;
    QString m_volumeMaxToolTip;
};

} // namespace tunedeck
