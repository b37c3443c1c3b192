// SPDX-License-Identifier: MIT
#pragma once

#include "BusTypes.h"

#include <QDBusConnection>
#include <QDBusMessage>
#include <QDBusVirtualObject>
#include <QHash>
#include <QTimer>
#include <QVariant>

#include <functional>
#include <optional>

namespace tunedeck::demo {

class Player;
class Script;
struct Oddities;
struct Track;

/// The player as MPRIS shows it, changed by the oddities, and the interface for scripts.
///
/// It answers every message itself, so that an answer can be late, missing or of the wrong type. libdbus answers Ping
/// and GetMachineId before this object sees them, as it does in most real players.
class MprisObject : public QDBusVirtualObject {
    Q_OBJECT

public:
    static constexpr const char *path = "/org/mpris/MediaPlayer2";
    static constexpr const char *controlInterface = "org.tunedeck.DemoPlayer";

    /// All must outlive the object.
    MprisObject(Player &player, const Oddities &oddities, Script &script, const QDBusConnection &connection);

    [[nodiscard]] QString introspect(const QString &objectPath) const override;
    bool handleMessage(const QDBusMessage &message, const QDBusConnection &connection) override;

Q_SIGNALS:
    void quitRequested();

private:
    struct Property {
        QString interface;
        QString name;
        std::function<QVariant()> read;
        std::function<void(const QVariant &)> write; ///< empty: read only
    };
    struct Method {
        QString interface;
        QString name;
        QString signature;
        std::function<QVariantList(const QVariantList &)> carryOut; ///< gives the reply's arguments
    };
    /// The part of a new track that is shown so far.
    enum class Stage { Nothing, Identity, Everything };

    [[nodiscard]] QList<Property> rootProperties() const;
    [[nodiscard]] QList<Property> playerProperties();
    [[nodiscard]] QList<Property> playlistsProperties() const;
    [[nodiscard]] QList<Method> playerMethods();
    [[nodiscard]] QList<Method> otherMethods();

    void noteCall(const QDBusMessage &call);
    void answer(const QDBusMessage &call);
    /// Those that waited for the end of holding.
    void answerHeldCalls();
    void send(const QDBusMessage &message);
    [[nodiscard]] QDBusMessage control(const QDBusMessage &call);
    [[nodiscard]] QDBusMessage carryOut(const QDBusMessage &call);
    [[nodiscard]] bool isPageTooFar(const QDBusMessage &call) const;
    [[nodiscard]] QDBusMessage carryOutProperties(const QDBusMessage &call);
    [[nodiscard]] QDBusMessage get(const QDBusMessage &call);
    [[nodiscard]] QDBusMessage set(const QDBusMessage &call);
    [[nodiscard]] QDBusMessage getAll(const QDBusMessage &call);

    [[nodiscard]] bool offers(const QString &interface) const;
    [[nodiscard]] const Property *property(const QString &interface, const QString &name) const;
    [[nodiscard]] bool isProperty(const QString &key) const;
    [[nodiscard]] QVariant valueOf(const Property &property) const;
    [[nodiscard]] QVariantMap valuesOf(const QString &interface) const;

    [[nodiscard]] bool can(const QString &capability) const;
    [[nodiscard]] std::function<QVariantList(const QVariantList &)> command(
        const QString &capability, const std::function<void()> &action);
    [[nodiscard]] QString status() const;
    [[nodiscard]] qint64 position() const;
    [[nodiscard]] ActivePlaylist activePlaylist() const;
    [[nodiscard]] QVariantMap metadata() const;
    /// The texts and the address.
    [[nodiscard]] QVariantMap tags(const Track &track) const;
    [[nodiscard]] QVariant trackId() const;
    [[nodiscard]] bool isCurrentTrack(const QString &id) const;
    [[nodiscard]] QList<PlaylistEntry> playlists(const QVariantList &arguments) const;

    void announce();
    void announce(const QString &interface, const QStringList &names);
    void emitChanged(const QString &interface, const QVariantMap &changed);
    void echoVolume(const QVariant &before, const QVariant &now);
    void emitSeeked(qint64 position);
    void forgetAnnounced(const QString &name);
    void showTrack();
    void enterStage(Stage stage);
    void showNextStage();
    void flood();
    void timeUnaskedSeeks();

    Player &m_player;
    const Oddities &m_oddities;
    Script &m_script;
    QDBusConnection m_connection;
    QList<Property> m_properties;
    QList<Method> m_methods;
    QHash<QString, QVariantMap> m_announced; ///< the values that clients know, by interface
    QStringList m_calls;
    QList<QDBusMessage> m_heldCalls;
    Stage m_stage = Stage::Everything;
    QTimer m_stageTimer;
    QTimer m_unaskedSeekTimer;
    bool m_flippedShuffle = false;
    int m_floodLeft = 0;
};

} // namespace tunedeck::demo
