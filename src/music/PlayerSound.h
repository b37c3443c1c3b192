// SPDX-License-Identifier: MIT
#pragma once

#include "music/PlayerProcess.h"

#include <QList>
#include <QObject>
#include <QString>
#include <QStringList>

#include <optional>

namespace tunedeck {

/// An output of the sound server that a player can be moved to.
struct SoundOutput {
    enum class Kind {
        Computer, ///< built in, or no device at all
        Usb,
        Hdmi,
        Bluetooth,
        Network,
        AirPlay
    };

    QString id; ///< the server's own name for it; never empty
    QString name; ///< for people (see menuText()); never empty
    Kind kind = Kind::Computer;

    bool operator==(const SoundOutput &) const = default;
};

/// The reason why the sound server has nothing of the followed player.
enum class SoundObstacle {
    None, ///< it has
    NoPlayer, ///< none is followed, or it is not known yet which process it is
    PlayerElsewhere, ///< the player runs on another machine
    NoServer, ///< no sound server runs, or it refuses this program
    NotResponding, ///< the server has let a deadline pass
    NotAsked, ///< the server has not been asked yet, or has not answered yet
    NoStream, ///< the player has no stream; most have one only once they play
    Ambiguous ///< the streams may be the player's or another's
};

/// The followed player's sound, as the sound server last reported it.
struct PlayerSoundState {
    /// Unless it is None, the other members are as they are here.
    SoundObstacle obstacle = SoundObstacle::NoPlayer;
    /// 0 to 100, of the loudest stream and channel, on the scale that desktops show; 100 also for a louder one. None if
    /// no stream has a volume that can be set.
    std::optional<int> volume = {};
    bool isMuted = false; ///< whether all streams are
    bool canMove = false; ///< false once the server has refused to move a stream
    QList<SoundOutput> outputs = {}; ///< all that there are, at most PlayerSound::maximumOutputs
    QStringList currentOutputs = {}; ///< identifiers of those that the player plays to, without repetitions

    bool operator==(const PlayerSoundState &) const = default;
};

/// The interface to the sound server: the streams of the followed player, apart from what the player itself says of its
/// volume. Nothing here waits for the server. A command belongs to the player that is followed when it is called; it
/// does nothing while there is an obstacle.
class PlayerSound : public QObject {
    Q_OBJECT

public:
    using QObject::QObject;

    static constexpr int maximumOutputs = 64;

    /// From now on, state() is about `player`. None: about no player.
    virtual void follow(const std::optional<PlayerProcess> &player) = 0;
    [[nodiscard]] virtual const PlayerSoundState &state() const = 0;
    /// Sets every stream to `volume`, 0 to 100, as a whole: the balance of its channels stays. state() has this volume
    /// at once, and the server's own when it has answered. A muted stream stays muted.
    virtual void setVolume(int volume) = 0;
    virtual void setMuted(bool isMuted) = 0;
    /// Moves every stream to the output with this identifier. Empty: to the default output, which the streams follow
    /// from then on.
    virtual void moveTo(const QString &outputId) = 0;

Q_SIGNALS:
    /// state() has changed. Emitted once for all that changed at once.
    void changed();
};

} // namespace tunedeck
