// SPDX-License-Identifier: MIT
#pragma once

#include "preferences/SeenPlayers.h"

namespace tunedeck {

class MprisMusicApplication;

/// The players that the preferences offer to follow: all MPRIS players on the session bus.
class MprisSeenPlayers : public SeenPlayers {
    Q_OBJECT

public:
    /// `music` must outlive this object.
    explicit MprisSeenPlayers(const MprisMusicApplication &music, QObject *parent = nullptr);

    [[nodiscard]] QList<SeenPlayer> seenPlayers() const override;

private:
    const MprisMusicApplication &m_music;
};

} // namespace tunedeck
