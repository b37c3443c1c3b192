// SPDX-License-Identifier: MIT
#pragma once

#include "audio/StreamOrigin.h"
#include "music/PlayerProcess.h"
#include "music/PlayerSound.h"

#include <QHash>
#include <QList>
#include <QSet>
#include <QString>

#include <cstdint>
#include <optional>

namespace tunedeck {

class ProcessTable;

/// Finds a player's streams among those of all programs.
class StreamOwnership {
public:
    struct Streams {
        /// NoPlayer, PlayerElsewhere, NoStream, Ambiguous, or None.
        SoundObstacle obstacle = SoundObstacle::None;
        QList<std::uint32_t> indexes = {}; ///< empty unless the obstacle is None

        bool operator==(const Streams &) const = default;
    };

    /// `processes` must outlive this object.
    StreamOwnership(PlayerProcess player, const ProcessTable &processes);

    /// NoPlayer or PlayerElsewhere, if the player can have no streams here; else None.
    [[nodiscard]] SoundObstacle obstacle() const;
    /// The player's streams among `origins`. A stream that was there before is not judged again: the process between it
    /// and the player may have ended meanwhile.
    [[nodiscard]] Streams among(const QList<StreamOrigin> &origins);

private:
    [[nodiscard]] bool mayBelong(const StreamOrigin &origin);
    [[nodiscard]] bool mayBelongToSandbox(const StreamOrigin &origin);
    [[nodiscard]] bool isStartedByPlayer(qint64 process) const;
    [[nodiscard]] bool hasNameOfPlayer(const StreamOrigin &origin) const;
    [[nodiscard]] QList<StreamOrigin> withoutStrangers(const QList<StreamOrigin> &candidates) const;
    [[nodiscard]] bool isAmbiguous(const QList<StreamOrigin> &streams) const;

    PlayerProcess m_player;
    const ProcessTable &m_processes;
    QString m_sandbox;
    struct Judged {
        StreamOrigin origin;
        bool mayBelong;
    };
    QHash<std::uint32_t, Judged> m_judged;
    /// The numbers of the sandbox's processes inside it. None until they are needed in a call of among().
    std::optional<QSet<qint64>> m_numbersInside;
};

} // namespace tunedeck
