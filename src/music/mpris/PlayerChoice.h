// SPDX-License-Identifier: MIT
#pragma once

#include <QList>
#include <QString>

#include <optional>

namespace tunedeck {

/// What the choice of the player to follow knows of a player on the bus.
struct PlayerCandidate {
    QString owner; ///< unique bus name
    QString name; ///< what stands behind "org.mpris.MediaPlayer2."
    std::optional<qint64> processId;
    bool isPlaying = false;
    quint64 lastPlayed = 0; ///< a number that grows with time; 0 for never
    std::optional<qint64> browserProcessId; ///< the browser for which an integration service speaks
};

/// What a player is called whichever of its kind it is: "chromium" for "chromium.instance1234".
[[nodiscard]] QString playerFamily(const QString &name);

/// Those of the candidates that may be followed. Left out are proxies of other players, the second name of one process,
/// and a browser for which an integration service speaks.
[[nodiscard]] QList<PlayerCandidate> followablePlayers(const QList<PlayerCandidate> &candidates);

/// The owner of the player to follow; none if there is none. `candidates` are in the order in which they came to the
/// bus.
///
/// First the `pinned` one (a family, see playerFamily()); then the one that plays, where a `current` one that plays is
/// never left; then the one that played last; then the first on the bus. Only followablePlayers() are.
[[nodiscard]] std::optional<QString> choosePlayer(
    const QList<PlayerCandidate> &candidates, const QString &pinned, const QString &current);

} // namespace tunedeck
