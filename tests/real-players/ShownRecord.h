// SPDX-License-Identifier: MIT
#pragma once

#include "music/MusicConnector.h"

#include <QStringList>
#include <QTimer>

#include <optional>

namespace tunedeck {

/// Records the track and the state that a connector shows, each time they change. Changes within a turn of the event
/// loop are not visible to a user, so only the last one counts.
class ShownRecord : public MusicConnectorDelegate {
public:
    explicit ShownRecord(MusicConnector &connector);
    ShownRecord(const ShownRecord &) = delete;
    ShownRecord &operator=(const ShownRecord &) = delete;
    ~ShownRecord() override;

    /// The three texts of `track` in one; "none" without a track.
    [[nodiscard]] static QString text(const std::optional<MusicConnectorTrack> &track);

    /// The tracks that were shown since clear(), as text().
    [[nodiscard]] const QStringList &texts() const { return m_texts; }
    /// "Playing", "Paused", "Stopped" or "Seeking".
    [[nodiscard]] const QStringList &states() const { return m_states; }
    void clear();

    void playerStateDidChange(FourCharCode state) override;

private:
    void record();

    MusicConnector &m_connector;
    QTimer m_endOfTurn;
    QString m_lastText = text(std::nullopt);
    FourCharCode m_lastState = PlayerState::stopped;
    QStringList m_texts;
    QStringList m_states;
};

} // namespace tunedeck
