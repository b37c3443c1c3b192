// SPDX-License-Identifier: MIT
#pragma once

#include "music/mpris/PlayerCalls.h"
#include "music/mpris/PlayerCommands.h"
#include "music/mpris/PlayerMirror.h"
#include "music/mpris/PlayingPlaylist.h"
#include "music/mpris/bus/PlayerSignals.h"
#include "music/mpris/report/PropertyTypes.h"

#include <QDBusConnection>
#include <QObject>
#include <QTimer>

#include <memory>
#include <optional>

namespace tunedeck {

/// Where a player is on the bus.
struct PlayerAddress {
    QString owner; ///< unique name of its connection
    QString name; ///< well-known name without "org.mpris.MediaPlayer2."
    std::optional<qint64> processId; ///< none if the bus does not know
    bool sharesConnection = false; ///< whether its connection shows other players too
};

/// One player on the bus: keeps its mirror up to date. Nothing waits for the player.
class MprisPlayer : public QObject {
    Q_OBJECT

public:
    /// Whether the player was on the bus before the program looked, or came afterwards.
    enum class Arrival { WasThere, JustCame };

    /// All properties are read at once. `signalsOfPlayers` is that of `connection`, and must outlive this object.
    MprisPlayer(const QDBusConnection &connection, bus::SignalStream &signalsOfPlayers, PlayerAddress address,
        Arrival arrival, Clock clock, QObject *parent = nullptr);

    [[nodiscard]] const QString &owner() const { return m_calls.owner(); }
    [[nodiscard]] const QString &name() const { return m_address.name; }
    [[nodiscard]] std::optional<qint64> processId() const { return m_address.processId; }
    /// The name on the bus that calls go to.
    [[nodiscard]] const QString &destination() const { return m_calls.destination(); }
    /// The name that the player gives itself, else its bus name (see menuText()).
    [[nodiscard]] QString identity() const;
    /// Identifier of the player's desktop entry, without a slash and not longer than 255 characters; empty if the
    /// player names none.
    [[nodiscard]] const QString &desktopEntry() const { return m_desktopEntry; }
    /// Whether the player says that it can show its own window.
    [[nodiscard]] bool canRaise() const { return m_canRaise; }
    /// Whether the player has answered in full once. Only then it can be followed.
    [[nodiscard]] bool isAttached() const { return m_attachment == Attachment::Attached; }
    /// Whether the first read has been answered or refused, or was not answered in time.
    [[nodiscard]] bool hasBeenAsked() const { return m_attachment != Attachment::Unasked; }
    [[nodiscard]] bool isResponding() const { return m_calls.isResponding(); }
    [[nodiscard]] const PlayerMirror &mirror() const { return m_mirror; }
    /// Do not use them before isAttached() is true.
    [[nodiscard]] PlayerCommands &commands() { return m_commands; }
    [[nodiscard]] const std::shared_ptr<PlayingPlaylist> &playingPlaylist() const { return m_playingPlaylist; }

    /// Whether its position is read from time to time while it plays. At first it is not.
    void setSampled(bool isSampled);
    /// Reads everything from the player again.
    void refresh();
    /// See PlayerAddress. Where several players share a connection, a signal only means that one of them has changed,
    /// as it carries no other name than the connection's.
    void setSharesConnection(bool sharesConnection);

Q_SIGNALS:
    /// hasBeenAsked() is true from now on.
    void asked();
    void attached();
    /// identity(), desktopEntry(), canRaise() are known, or have changed.
    void identityChanged();
    void changed(tunedeck::PlayerMirror::Changes changes);
    void respondingChanged(bool responding);

private:
    enum class Attachment {
        Unasked, ///< the first read is under way
        Waiting, ///< the first read was refused or not answered in time
        Attached
    };

    void chooseDestination();
    void askWhatItIs();
    void askWhatItIsSoon();
    void read();
    void readAfter(Milliseconds delay);
    void handleRead(const bus::Answer &answer);
    void applyRead(const QVariantMap &properties);
    void handleFailedRead(const bus::Answer &answer);
    void sample();
    void onSignal(const bus::PlayerSignal &signal);
    void handleInbox();
    void handleMissed();
    void readSoon();
    void handlePropertiesChanged(const QVariantMap &properties);
    void handleSeeked(const QVariant &microseconds);

    [[nodiscard]] Instant now() const { return m_clock(); }
    void handleRespondingChanged(bool responding);
    void apply(PlayerMirror::Changes changes);
    void scheduleSettling();
    void updateSampling();

    PlayerAddress m_address;
    QString m_nameText; ///< its name on the bus, fit for a menu
    Clock m_clock;
    PlayerCalls m_calls;
    bus::PlayerSignals m_signals;
    PropertyTypes m_propertyTypes;
    QString m_identity;
    QString m_desktopEntry;
    bool m_canRaise = false;

    PlayerMirror m_mirror;
    std::shared_ptr<PlayingPlaylist> m_playingPlaylist;
    PlayerCommands m_commands{m_calls, m_mirror, m_clock};
    Attachment m_attachment = Attachment::Unasked;
    bool m_isSampled = false;

    QList<bus::PlayerSignal> m_inbox;
    bool m_readUnderWay = false;
    bool m_readsAgain = false; ///< once the read under way is answered
    Milliseconds m_readDeadline;
    int m_refusals = 0;

    QTimer m_readSoon{this};
    QTimer m_askSoon{this};
    QTimer m_settle{this};
    QTimer m_sample{this};
    QTimer m_sampleUnderWay{this};
};

} // namespace tunedeck
