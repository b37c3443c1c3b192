// SPDX-License-Identifier: MIT
#pragma once

#include "music/MusicConnector.h"

#include <QStringList>
#include <QTimer>

#include <optional>

namespace tunedeck {

/// Writes down what a connector shows, each time that it is something else. What does not outlast the turn of the event
/// loop is not shown: nothing is drawn before that.
class ShownRecord : public MusicConnectorDelegate {
public:
    explicit ShownRecord(MusicConnector &connector);
    ShownRecord(const ShownRecord &) = delete;
    ShownRecord &operator=(const ShownRecord &) = delete;
    ~ShownRecord() override;

    /// The three texts of `track` in one; "none" without a track.
    [[nodiscard]] static QString text(const std::optional<MusicConnectorTrack> &track);

    /// What was shown since clear().
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
