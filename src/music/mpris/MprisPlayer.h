// SPDX-License-Identifier: MIT
#pragma once

#include "music/mpris/PlayerMirror.h"

#include <QDBusConnection>
#include <QDBusMessage>
#include <QObject>
#include <QTimer>

#include <functional>
#include <optional>

namespace tunedeck {

/// One player on the bus: keeps its mirror up to date and sends it commands. Nothing waits for the player; a player
/// that lets a deadline pass is not responding until it says anything again, and meanwhile is sent no commands, which
/// it would carry out later, out of time.
class MprisPlayer : public QObject {
    Q_OBJECT

public:
    /// Whether the player was on the bus before anyone looked, or came while we looked on.
    enum class Arrival { WasThere, JustCame };

    /// `owner` is the player's unique name on the bus, so that no call can start a program; `name` is what stands
    /// behind "org.mpris.MediaPlayer2.". The player is asked at once for all it says of itself.
    MprisPlayer(const QDBusConnection &bus, const QString &owner, const QString &name, Arrival arrival, Clock clock,
        QObject *parent = nullptr);

    [[nodiscard]] const QString &owner() const;
    [[nodiscard]] const QString &name() const;
    [[nodiscard]] std::optional<qint64> processId() const;
    /// What the player calls itself, else its bus name.
    [[nodiscard]] QString identity() const;
    /// Identifier of the player's desktop entry, without a slash and not longer than a file's name; empty where the
    /// player has named none.
    [[nodiscard]] const QString &desktopEntry() const;
    /// Whether the player has once answered in full. Before that there is nothing to follow.
    [[nodiscard]] bool isAttached() const;
    /// Whether the first question has been answered, refused or not answered in time.
    [[nodiscard]] bool hasBeenAsked() const;
    [[nodiscard]] bool isResponding() const;
    [[nodiscard]] const PlayerMirror &mirror() const;

    /// Whether it is asked for its position from time to time while it plays: at first it is not.
    void setSampled(bool isSampled);
    /// Asks the player anew for everything.
    void readAnew();

    /// @name Commands
    /// Each returns whether it was, or will be, sent. No two of one kind are under way at once: of seeks and volumes
    /// the last one wanted follows when the one before is answered, others are dropped.
    /// @{
    /// Toggles; stops instead where the player cannot pause. What the player will do is believed from now on, and sent
    /// when sendPlayPause() is called or taken back by dropPlayPause().
    bool askForPlayPause();
    void sendPlayPause();
    void dropPlayPause();
    bool next();
    bool previous();
    /// Seconds; clamped to what players take without skipping the track.
    bool setPosition(double seconds);
    /// 0 to 1.
    bool setVolume(double volume);
    bool setShuffle(bool enabled);
    bool setLoopStatus(LoopStatus status);
    /// @}

Q_SIGNALS:
    /// The first question has been answered, refused or not answered in time; isAttached() tells which.
    void asked();
    void attached();
    void identityChanged();
    void changed(tunedeck::PlayerMirror::Changes changes);
    void respondingChanged(bool responding);

private Q_SLOTS:
    void onPropertiesChanged(const QDBusMessage &signal);
    void onSeeked(const QDBusMessage &signal);

private:
    using ReplyHandler = std::function<void(const QDBusMessage &reply)>;
    /// The last value wanted (a position in seconds or a volume from 0 to 1), and whether the one before it is still
    /// unanswered.
    struct Wanted {
        std::optional<double> value;
        bool isUnanswered = false;
    };

    void subscribe();
    void askForProcessId();
    void askWhatItIs();
    void read(PlayerMirror::ReadPurpose purpose);
    void readAfter(Milliseconds delay, PlayerMirror::ReadPurpose purpose);
    void takeRead(const QDBusMessage &reply);
    void readFailed(const QDBusMessage &reply);
    void samplePosition();
    void onSignal(const QDBusMessage &signal);
    void takeInbox();
    void takePropertiesChanged(const QDBusMessage &signal);
    void takeSeeked(const QDBusMessage &signal);

    void call(const QString &interface, const QString &method, const QVariantList &arguments, Milliseconds patience,
        const ReplyHandler &handler);
    void callPlayer(const QString &method, const QVariantList &arguments, const ReplyHandler &handler);
    void setProperty(const QString &property, const QVariant &value, const ReplyHandler &handler);
    bool sendOnce(const QString &method, bool &isUnansweredYet);
    void sendWantedPosition();
    void sendWantedVolume();

    [[nodiscard]] Instant now() const { return m_clock(); }
    [[nodiscard]] bool takesCommands() const;
    void heardFromPlayer();
    void stopResponding();
    void apply(PlayerMirror::Changes changes);
    void scheduleSettling();
    void updateSampling();

    QDBusConnection m_bus;
    QString m_owner;
    QString m_name;
    Clock m_clock;
    std::optional<qint64> m_processId;
    QString m_identity;
    QString m_desktopEntry;

    PlayerMirror m_mirror;
    bool m_isAttached = false;
    bool m_hasBeenAsked = false;
    bool m_isResponding = true;
    bool m_isSampled = false;
    bool m_announcesSeeks = false;

    QList<QDBusMessage> m_inbox;
    bool m_readIsUnanswered = false;
    std::optional<PlayerMirror::ReadPurpose> m_nextRead;
    PlayerMirror::ReadPurpose m_readPurpose = PlayerMirror::ReadPurpose::Everything;
    Milliseconds m_readDeadline;
    int m_refusals = 0;

    bool m_sendsStop = false;
    bool m_playPauseIsUnanswered = false;
    bool m_nextIsUnanswered = false;
    bool m_previousIsUnanswered = false;
    Wanted m_position;
    Wanted m_volume;

    QTimer m_readSoon{this};
    QTimer m_settle{this};
    QTimer m_sample{this};
    QTimer m_sampleUnderWay{this};
};

} // namespace tunedeck
