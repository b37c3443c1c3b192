// SPDX-License-Identifier: MIT
#include "MprisObject.h"

#include "Oddities.h"
#include "Player.h"
#include "Script.h"

#include <QDBusPendingCallWatcher>
#include <QDBusVariant>
#include <QFile>
#include <QVariantList>
#include <QVariantMap>

#include <algorithm>
#include <cstdlib>
#include <unistd.h>
#include <utility>

namespace tunedeck::demo {

using namespace Qt::StringLiterals;
using namespace std::chrono_literals;

namespace {

QString rootInterface()
{
    return u"org.mpris.MediaPlayer2"_s;
}

QString playerInterface()
{
    return u"org.mpris.MediaPlayer2.Player"_s;
}

QString playlistsInterface()
{
    return u"org.mpris.MediaPlayer2.Playlists"_s;
}

QString propertiesInterface()
{
    return u"org.freedesktop.DBus.Properties"_s;
}

QString introspectableInterface()
{
    return u"org.freedesktop.DBus.Introspectable"_s;
}

QString objectPath()
{
    return QString::fromLatin1(MprisObject::path);
}

constexpr QLatin1StringView playlistPath("/org/tunedeck/demo/playlist/");
constexpr QLatin1StringView constantTrackId("/org/mpris/MediaPlayer2/CurrentTrack");

QString introspection()
{
    QFile file(u":/org.mpris.MediaPlayer2.xml"_s);
    return file.open(QIODevice::ReadOnly) ? QString::fromUtf8(file.readAll()) : QString();
}

PlaylistEntry entryOf(qsizetype number, const Playlist &playlist)
{
    return {QDBusObjectPath(playlistPath + QString::number(number)), playlist.name, {}};
}

QString textOf(const QVariant &argument)
{
    if (argument.metaType() == QMetaType::fromType<QDBusObjectPath>()) {
        return argument.value<QDBusObjectPath>().path();
    }
    if (argument.metaType() == QMetaType::fromType<QDBusVariant>()) {
        return textOf(argument.value<QDBusVariant>().variant());
    }
    // Six digits, as 0.3 computed by a client may be 0.30000000000000004.
    return argument.typeId() == QMetaType::Double ? QString::number(argument.toDouble()) : argument.toString();
}

/// A call in the form that tests compare: "Seek 5000000", "Set Volume 0.5", "Get Position", "GetAll <interface>".
QString textOf(const QDBusMessage &call)
{
    QVariantList arguments = call.arguments();
    const bool namesAProperty = call.interface() == propertiesInterface() && call.member() != u"GetAll"_s;
    if (namesAProperty && !arguments.isEmpty()) {
        arguments.removeFirst();
    }
    QStringList words{call.member()};
    for (const QVariant &argument : std::as_const(arguments)) {
        words.append(textOf(argument));
    }
    return words.join(u' ');
}

QDBusMessage unknownInterface(const QDBusMessage &call, const QString &interface)
{
    return call.createErrorReply(QDBusError::UnknownInterface, u"No interface \"%1\""_s.arg(interface));
}

QDBusMessage unknownMethod(const QDBusMessage &call)
{
    return call.createErrorReply(
        QDBusError::UnknownMethod, u"No method \"%1\" (%2)"_s.arg(call.member(), call.signature()));
}

} // namespace

MprisObject::MprisObject(Player &player, const Oddities &oddities, Script &script, const QDBusConnection &connection)
    : m_player(player)
    , m_oddities(oddities)
    , m_script(script)
    , m_connection(connection)
    , m_properties(rootProperties() + playerProperties() + playlistsProperties())
    , m_methods(playerMethods() + otherMethods())
{
    m_stageTimer.setSingleShot(true);
    m_stageTimer.setTimerType(Qt::PreciseTimer);
    connect(&m_stageTimer, &QTimer::timeout, this, &MprisObject::showNextStage);
    m_unaskedSeekTimer.setTimerType(Qt::PreciseTimer);
    connect(&m_unaskedSeekTimer, &QTimer::timeout, this, [this] { emitSeeked(position()); });
    connect(&player, &Player::changed, this, qOverload<>(&MprisObject::announce));
    connect(&player, &Player::changed, this, &MprisObject::timeUnaskedSeeks);
    connect(&player, &Player::trackStarted, this, &MprisObject::showTrack);
    connect(&player, &Player::seeked, this, [this](auto position) { emitSeeked(position.count()); });
    connect(&player, &Player::playlistRenamed, this, [this](qsizetype number) {
        auto message = QDBusMessage::createSignal(objectPath(), playlistsInterface(), u"PlaylistChanged"_s);
        send(message << QVariant::fromValue(entryOf(number, m_player.playlists().at(number))));
    });
    connect(&script, &Script::lineDone, this, qOverload<>(&MprisObject::announce));
    connect(&script, &Script::lineDone, this, &MprisObject::answerHeldCalls);
    connect(&script, &Script::lineDone, this, &MprisObject::timeUnaskedSeeks);
    connect(&script, &Script::floodWanted, this, [this](int count) {
        const bool isFlooding = m_floodLeft > 0;
        m_floodLeft += count;
        if (!isFlooding) {
            flood();
        }
    });
    for (const QString &interface : {rootInterface(), playerInterface(), playlistsInterface()}) {
        m_announced[interface] = valuesOf(interface);
    }
}

QString MprisObject::introspect(const QString &) const
{
    return introspection();
}

bool MprisObject::handleMessage(const QDBusMessage &message, const QDBusConnection &)
{
    if (message.interface() == QLatin1StringView(controlInterface)) {
        send(control(message));
        return true;
    }
    noteCall(message);
    if (m_oddities.diesOnCall) {
        _exit(EXIT_FAILURE);
    }
    if (m_oddities.isSilent) {
        return true;
    }
    if (m_oddities.holdsCalls) {
        m_heldCalls.append(message);
    } else if (m_oddities.late == 0ms) {
        answer(message);
    } else {
        QTimer::singleShot(m_oddities.late, Qt::PreciseTimer, this, [this, message] { answer(message); });
    }
    return true;
}

void MprisObject::answer(const QDBusMessage &call)
{
    const QDBusMessage reply = carryOut(call);
    if (call.isReplyRequired()) {
        send(reply);
    }
}

void MprisObject::answerHeldCalls()
{
    if (m_oddities.holdsCalls) {
        return;
    }
    const QList<QDBusMessage> calls = std::exchange(m_heldCalls, {});
    for (const QDBusMessage &call : calls) {
        answer(call);
    }
}

void MprisObject::noteCall(const QDBusMessage &call)
{
    // Clients ask a player that runs all day for its position again and again, and no test takes the calls.
    constexpr qsizetype enough = 100'000;
    if (m_calls.size() == enough) {
        m_calls.removeFirst();
    }
    m_calls.append(textOf(call));
}

void MprisObject::send(const QDBusMessage &message)
{
    m_connection.send(message);
}

QDBusMessage MprisObject::control(const QDBusMessage &call)
{
    if (call.member() == u"TakeCalls"_s && call.signature().isEmpty()) {
        return call.createReply(std::exchange(m_calls, {}));
    }
    if (call.member() != u"Script"_s || call.signature() != u"s"_s) {
        return unknownMethod(call);
    }
    const std::optional<QString> error = m_script.run(call.arguments().constFirst().toString());
    return error ? call.createErrorReply(QDBusError::InvalidArgs, *error) : call.createReply();
}

QDBusMessage MprisObject::carryOut(const QDBusMessage &call)
{
    if (call.interface() == propertiesInterface()) {
        return carryOutProperties(call);
    }
    const auto ofThisInterface = [&call](const Method &method) { return method.interface == call.interface(); };
    if (!offers(call.interface()) || std::none_of(m_methods.cbegin(), m_methods.cend(), ofThisInterface)) {
        return unknownInterface(call, call.interface());
    }
    for (const Method &method : std::as_const(m_methods)) {
        if (ofThisInterface(method) && method.name == call.member() && method.signature == call.signature()) {
            if (isPageTooFar(call)) {
                return call.createErrorReply(QDBusError::InvalidArgs, u"There are not so many playlists"_s);
            }
            return call.createReply(method.carryOut(call.arguments()));
        }
    }
    return unknownMethod(call);
}

bool MprisObject::isPageTooFar(const QDBusMessage &call) const
{
    return m_oddities.isStrictOnPages && call.member() == u"GetPlaylists"_s
        && call.arguments().at(0).toUInt() >= m_player.playlists().size();
}

QDBusMessage MprisObject::carryOutProperties(const QDBusMessage &call)
{
    if (call.member() == u"Get"_s && call.signature() == u"ss"_s) {
        return get(call);
    }
    if (call.member() == u"Set"_s && call.signature() == u"ssv"_s) {
        return set(call);
    }
    if (call.member() == u"GetAll"_s && call.signature() == u"s"_s) {
        return getAll(call);
    }
    return unknownMethod(call);
}

QDBusMessage MprisObject::get(const QDBusMessage &call)
{
    const QString name = call.arguments().at(1).toString();
    if (m_oddities.deadly.contains(name)) {
        std::abort();
    }
    m_flippedShuffle = !m_flippedShuffle;
    const Property *const wanted = property(call.arguments().constFirst().toString(), name);
    if (!wanted || m_oddities.absent.contains(name)) {
        return call.createErrorReply(QDBusError::UnknownProperty, u"No property \"%1\""_s.arg(name));
    }
    return call.createReply(QVariant::fromValue(QDBusVariant(valueOf(*wanted))));
}

QDBusMessage MprisObject::set(const QDBusMessage &call)
{
    const QString name = call.arguments().at(1).toString();
    const QVariant value = call.arguments().at(2).value<QDBusVariant>().variant();
    const Property *const wanted = property(call.arguments().constFirst().toString(), name);
    if (!wanted || m_oddities.absent.contains(name)) {
        return call.createErrorReply(QDBusError::UnknownProperty, u"No property \"%1\""_s.arg(name));
    }
    if (!wanted->write) {
        return call.createErrorReply(QDBusError::PropertyReadOnly, u"\"%1\" is read only"_s.arg(name));
    }
    if (value.metaType() != wanted->read().metaType()) {
        return call.createErrorReply(QDBusError::InvalidArgs, u"\"%1\" is of another type"_s.arg(name));
    }
    if (can(u"CanControl"_s) && !m_oddities.refused.contains(name)) {
        wanted->write(value);
    }
    return call.createReply();
}

QDBusMessage MprisObject::getAll(const QDBusMessage &call)
{
    const QString interface = call.arguments().constFirst().toString();
    if (!offers(interface) || !m_announced.contains(interface)) {
        return unknownInterface(call, interface);
    }
    m_flippedShuffle = !m_flippedShuffle;
    return call.createReply(valuesOf(interface));
}

bool MprisObject::offers(const QString &interface) const
{
    return interface != playlistsInterface() || m_oddities.offersPlaylists;
}

const MprisObject::Property *MprisObject::property(const QString &interface, const QString &name) const
{
    const auto found = std::find_if(m_properties.cbegin(), m_properties.cend(), [&](const Property &candidate) {
        return candidate.interface == interface && candidate.name == name && offers(interface);
    });
    return found == m_properties.cend() ? nullptr : &*found;
}

bool MprisObject::isProperty(const QString &key) const
{
    return std::any_of(m_properties.cbegin(), m_properties.cend(),
        [&key](const Property &candidate) { return candidate.name == key; });
}

QVariant MprisObject::valueOf(const Property &property) const
{
    const auto wrong = m_oddities.wrong.constFind(property.name);
    return wrong == m_oddities.wrong.cend() ? property.read() : *wrong;
}

QVariantMap MprisObject::valuesOf(const QString &interface) const
{
    QVariantMap values;
    for (const Property &candidate : m_properties) {
        if (candidate.interface == interface && !m_oddities.absent.contains(candidate.name)) {
            values.insert(candidate.name, valueOf(candidate));
        }
    }
    return values;
}

QList<MprisObject::Property> MprisObject::rootProperties() const
{
    const auto constant = [](const QString &name, const QVariant &value) {
        return Property{rootInterface(), name, [value] { return value; }, {}};
    };
    return {
        constant(u"CanQuit"_s, true),
        constant(u"CanRaise"_s, false),
        constant(u"HasTrackList"_s, false),
        constant(u"Identity"_s, u"Tunedeck Demo Player"_s),
        constant(u"DesktopEntry"_s, u"tunedeck-demo-player"_s),
        constant(u"SupportedUriSchemes"_s, QStringList{u"file"_s, u"http"_s, u"https"_s}),
        constant(u"SupportedMimeTypes"_s, QStringList{u"audio/flac"_s, u"audio/mpeg"_s, u"audio/ogg"_s}),
    };
}

QList<MprisObject::Property> MprisObject::playerProperties()
{
    const auto make = [](const char *name, std::function<QVariant()> read,
                          std::function<void(const QVariant &)> write = {}) {
        return Property{playerInterface(), QString::fromLatin1(name), std::move(read), std::move(write)};
    };
    const QStringList loopNames{u"None"_s, u"Track"_s, u"Playlist"_s};
    QList<Property> properties{
        make("PlaybackStatus", [this] { return status(); }),
        make(
            "LoopStatus", [this, loopNames] { return loopNames.at(static_cast<int>(m_player.loopStatus())); },
            [this, loopNames](const QVariant &value) {
                if (loopNames.contains(value.toString())) {
                    m_player.setLoopStatus(static_cast<LoopStatus>(loopNames.indexOf(value.toString())));
                }
            }),
        make(
            "Rate", [this] { return m_player.rate(); },
            [this](const QVariant &value) { m_player.setRate(value.toDouble()); }),
        make(
            "Shuffle", [this] { return m_oddities.flipsShuffle ? m_flippedShuffle : m_player.isShuffled(); },
            [this](const QVariant &value) {
                if (!m_oddities.flipsShuffle) {
                    m_player.setShuffled(value.toBool());
                }
            }),
        make("Metadata", [this] { return metadata(); }),
        make(
            "Volume", [this] { return m_player.volume(); },
            [this](const QVariant &value) { m_player.setVolume(std::clamp(value.toDouble(), 0.0, 1.0)); }),
        make("Position", [this] { return QVariant::fromValue<qlonglong>(position()); }),
        make("MinimumRate", [] { return Player::minimumRate; }),
        make("MaximumRate", [] { return Player::maximumRate; }),
    };
    for (const char *name : {"CanGoNext", "CanGoPrevious", "CanPlay", "CanPause", "CanSeek", "CanControl"}) {
        properties.append(make(name, [this, key = QString::fromLatin1(name)] { return can(key); }));
    }
    return properties;
}

QList<MprisObject::Property> MprisObject::playlistsProperties() const
{
    const auto make = [](const QString &name, std::function<QVariant()> read) {
        return Property{playlistsInterface(), name, std::move(read), {}};
    };
    return {
        make(u"PlaylistCount"_s, [this] { return static_cast<uint>(m_player.playlists().size()); }),
        make(u"Orderings"_s, [] { return QStringList{u"UserDefined"_s, u"Alphabetical"_s}; }),
        make(u"ActivePlaylist"_s, [this] { return QVariant::fromValue(activePlaylist()); }),
    };
}

QList<MprisObject::Method> MprisObject::playerMethods()
{
    using std::chrono::microseconds;
    const auto make = [](const char *name, const char *signature, auto carryOut) {
        return Method{
            playerInterface(), QString::fromLatin1(name), QString::fromLatin1(signature), std::move(carryOut)};
    };
    return {
        make("Next", "", command(u"CanGoNext"_s, [this] { m_player.next(); })),
        make("Previous", "", command(u"CanGoPrevious"_s, [this] { m_player.previous(); })),
        make("Pause", "",
            command(u"CanPause"_s, [this] { m_oddities.togglesAlways ? m_player.playPause() : m_player.pause(); })),
        make("PlayPause", "", command(u"CanPause"_s, [this] { m_player.playPause(); })),
        make("Stop", "", command(u"CanControl"_s, [this] { m_player.stop(); })),
        make("Play", "",
            command(u"CanPlay"_s, [this] { m_oddities.togglesAlways ? m_player.playPause() : m_player.play(); })),
        make("Seek", "x",
            [this](const QVariantList &arguments) -> QVariantList {
                if (can(u"CanSeek"_s)) {
                    m_player.seekBy(microseconds(arguments.at(0).toLongLong()));
                }
                return {};
            }),
        make("SetPosition", "ox",
            [this](const QVariantList &arguments) -> QVariantList {
                if (can(u"CanSeek"_s) && isCurrentTrack(arguments.at(0).value<QDBusObjectPath>().path())) {
                    m_player.setPosition(microseconds(arguments.at(1).toLongLong()));
                }
                return {};
            }),
        make("OpenUri", "s",
            [this](const QVariantList &arguments) -> QVariantList {
                if (can(u"CanControl"_s)) {
                    m_player.open(arguments.at(0).toString());
                }
                return {};
            }),
    };
}

QList<MprisObject::Method> MprisObject::otherMethods()
{
    return {
        {rootInterface(), u"Raise"_s, {}, [](const QVariantList &) { return QVariantList(); }},
        {rootInterface(), u"Quit"_s, {},
            [this](const QVariantList &) -> QVariantList {
                Q_EMIT quitRequested();
                return {};
            }},
        {playlistsInterface(), u"ActivatePlaylist"_s, u"o"_s,
            [this](const QVariantList &arguments) -> QVariantList {
                const QString id = arguments.at(0).value<QDBusObjectPath>().path();
                bool isNumber = false;
                const qlonglong number = id.mid(playlistPath.size()).toLongLong(&isNumber);
                if (id.startsWith(playlistPath) && isNumber && can(u"CanControl"_s)) {
                    m_player.activatePlaylist(number);
                }
                return {};
            }},
        {playlistsInterface(), u"GetPlaylists"_s, u"uusb"_s,
            [this](
                const QVariantList &arguments) -> QVariantList { return {QVariant::fromValue(playlists(arguments))}; }},
        {introspectableInterface(), u"Introspect"_s, {},
            [](const QVariantList &) -> QVariantList { return {introspection()}; }},
    };
}

bool MprisObject::can(const QString &capability) const
{
    if (m_oddities.denied.contains(capability) || m_oddities.denied.contains(u"CanControl"_s)) {
        return false;
    }
    if (capability == u"CanGoNext"_s) {
        return m_player.canGoNext();
    }
    if (capability == u"CanGoPrevious"_s) {
        return m_player.canGoPrevious();
    }
    if (capability == u"CanSeek"_s) {
        return m_player.canSeek();
    }
    return capability == u"CanControl"_s || m_player.currentTrack().has_value();
}

std::function<QVariantList(const QVariantList &)> MprisObject::command(
    const QString &capability, const std::function<void()> &action)
{
    return [this, capability, action](const QVariantList &) -> QVariantList {
        if (can(capability)) {
            action();
        }
        return {};
    };
}

QString MprisObject::status() const
{
    if (m_stage == Stage::Nothing || m_player.status() == PlaybackStatus::Stopped) {
        return u"Stopped"_s;
    }
    return m_player.status() == PlaybackStatus::Playing ? u"Playing"_s : u"Paused"_s;
}

qint64 MprisObject::position() const
{
    const std::chrono::microseconds position = m_player.position();
    return (m_oddities.stale > 0ms ? position - position % m_oddities.stale : position).count();
}

ActivePlaylist MprisObject::activePlaylist() const
{
    const qsizetype number = m_oddities.viewedPlaylist.value_or(m_player.activePlaylist().value_or(-1));
    if (number < 0 || number >= m_player.playlists().size()) {
        return {};
    }
    return {true, entryOf(number, m_player.playlists().at(number))};
}

QVariantMap MprisObject::tags(const Track &track) const
{
    if (m_oddities.hasNoTexts) {
        return {};
    }
    QVariantMap tags{{u"xesam:url"_s, track.url}, {u"xesam:title"_s, track.title}, {u"xesam:artist"_s, track.artists},
        {u"xesam:album"_s, track.album}, {u"xesam:genre"_s, track.genres}};
    if (track.isLive() && !m_oddities.songKey.isEmpty()) {
        tags.insert(m_oddities.songKey, track.title);
        tags.insert(u"xesam:title"_s, u"Pelican Radio"_s);
    }
    return tags;
}

QVariantMap MprisObject::metadata() const
{
    const std::optional<Track> track = m_player.currentTrack();
    const bool isHidden = m_player.status() == PlaybackStatus::Stopped && !m_oddities.keepsMetadataWhenStopped;
    if (!track || isHidden || m_stage == Stage::Nothing) {
        return {};
    }
    QVariantMap tags = this->tags(*track);
    tags.insert(u"mpris:trackid"_s, trackId());
    if (track->length) {
        tags.insert(u"mpris:length"_s, QVariant::fromValue<qlonglong>(track->length->count()));
    }
    if (m_oddities.integratedPid > 0) {
        tags.insert(u"kde:pid"_s, m_oddities.integratedPid);
    }
    tags.removeIf([](const auto &tag) {
        const bool isEmptyText = tag.value().typeId() == QMetaType::QString && tag.value().toString().isEmpty();
        const bool isEmptyList = tag.value().typeId() == QMetaType::QStringList && tag.value().toStringList().isEmpty();
        return !tag.value().isValid() || isEmptyText || isEmptyList;
    });
    for (auto wrong = m_oddities.wrong.cbegin(); wrong != m_oddities.wrong.cend(); ++wrong) {
        if (!isProperty(wrong.key())) {
            tags.insert(wrong.key(), wrong.value());
        }
    }
    tags.removeIf([this](const auto &tag) {
        const bool isIdentity = tag.key() == u"mpris:trackid"_s || tag.key() == u"mpris:length"_s;
        return m_oddities.absent.contains(tag.key()) || (m_stage == Stage::Identity && !isIdentity);
    });
    return tags;
}

QVariant MprisObject::trackId() const
{
    const QString id = u"/org/tunedeck/demo/track/%1"_s.arg(m_player.currentTrackNumber());
    switch (m_oddities.trackId) {
    case TrackIdKind::Path:
        return QVariant::fromValue(QDBusObjectPath(id));
    case TrackIdKind::String:
        return id;
    case TrackIdKind::Constant:
        return QVariant::fromValue(QDBusObjectPath(constantTrackId));
    case TrackIdKind::None:
        break;
    }
    return {};
}

bool MprisObject::isCurrentTrack(const QString &id) const
{
    return m_oddities.trackId == TrackIdKind::None || id == textOf(trackId());
}

QList<PlaylistEntry> MprisObject::playlists(const QVariantList &arguments) const
{
    const auto index = static_cast<qsizetype>(arguments.at(0).toUInt());
    const auto maximum = static_cast<qsizetype>(arguments.at(1).toUInt());
    const bool isAlphabetical = arguments.at(2).toString() == u"Alphabetical"_s;
    const bool isReversed = arguments.at(3).toBool();

    QList<PlaylistEntry> entries;
    entries.reserve(m_player.playlists().size());
    for (const Playlist &playlist : m_player.playlists()) {
        entries.append(entryOf(entries.size(), playlist));
    }
    if (isAlphabetical) {
        std::stable_sort(entries.begin(), entries.end(),
            [](const PlaylistEntry &left, const PlaylistEntry &right) { return left.name < right.name; });
    }
    if (isReversed) {
        std::reverse(entries.begin(), entries.end());
    }
    return entries.mid(qMin(index, entries.size()), qMin(maximum, m_oddities.longestPage));
}

void MprisObject::announce()
{
    for (const QString &interface : {rootInterface(), playerInterface(), playlistsInterface()}) {
        announce(interface, valuesOf(interface).keys());
    }
}

void MprisObject::announce(const QString &interface, const QStringList &names)
{
    const QVariantMap values = valuesOf(interface);
    QVariantMap &announced = m_announced[interface];
    const QVariant volumeBefore = announced.value(u"Volume"_s);
    QVariantMap changed;
    for (const QString &name : names) {
        const bool isFlipped = name == u"Shuffle"_s && m_oddities.flipsShuffle;
        const bool changesByItself = (name == u"Position"_s || isFlipped) && !m_oddities.wrong.contains(name);
        if (values.value(name) == announced.value(name) || changesByItself || !offers(interface)) {
            continue;
        }
        if (!m_oddities.quiet.contains(name)) {
            changed.insert(name, values.value(name));
        }
        announced.insert(name, values.value(name));
    }
    if (changed.contains(u"Volume"_s) && m_oddities.volumeEchoes > 1) {
        echoVolume(volumeBefore, changed.take(u"Volume"_s));
    }
    if (!changed.isEmpty()) {
        emitChanged(interface, changed);
    }
}

void MprisObject::emitChanged(const QString &interface, const QVariantMap &changed)
{
    if (m_oddities.announcesProperties) {
        send(QDBusMessage::createSignal(objectPath(), propertiesInterface(), u"PropertiesChanged"_s)
            << interface << changed << QStringList());
    }
}

void MprisObject::echoVolume(const QVariant &before, const QVariant &now)
{
    emitChanged(playerInterface(), {{u"Volume"_s, before}});
    for (int echo = 1; echo < m_oddities.volumeEchoes; ++echo) {
        emitChanged(playerInterface(), {{u"Volume"_s, now}});
    }
}

void MprisObject::emitSeeked(qint64 position)
{
    if (m_oddities.announcesSeeks) {
        send(QDBusMessage::createSignal(objectPath(), playerInterface(), u"Seeked"_s)
            << QVariant::fromValue<qlonglong>(position));
    }
}

void MprisObject::timeUnaskedSeeks()
{
    if (m_oddities.unaskedSeeks == 0ms || m_player.status() != PlaybackStatus::Playing) {
        m_unaskedSeekTimer.stop();
    } else if (!m_unaskedSeekTimer.isActive() || m_unaskedSeekTimer.intervalAsDuration() != m_oddities.unaskedSeeks) {
        m_unaskedSeekTimer.start(m_oddities.unaskedSeeks);
    }
}

void MprisObject::forgetAnnounced(const QString &name)
{
    m_announced[playerInterface()].remove(name);
}

void MprisObject::showTrack()
{
    // A track that follows itself has the same metadata, and is announced nevertheless.
    forgetAnnounced(u"Metadata"_s);
    enterStage(m_oddities.blink > 0ms ? Stage::Nothing : Stage::Identity);
    announce();
}

void MprisObject::enterStage(Stage stage)
{
    const bool isSkipped = stage == Stage::Identity && m_oddities.partial == 0ms;
    m_stage = isSkipped ? Stage::Everything : stage;
    if (m_stage == Stage::Everything) {
        m_stageTimer.stop();
    } else {
        m_stageTimer.start(m_stage == Stage::Nothing ? m_oddities.blink : m_oddities.partial);
    }
}

void MprisObject::showNextStage()
{
    enterStage(m_stage == Stage::Nothing ? Stage::Identity : Stage::Everything);
    // The metadata comes before the status, each in its own signal.
    announce(playerInterface(), {u"Metadata"_s});
    announce();
}

void MprisObject::flood()
{
    constexpr int chunk = 50;
    for (int sent = 0; sent < chunk && m_floodLeft > 0; ++sent, --m_floodLeft) {
        QVariantMap tags = metadata();
        tags.insert(u"xesam:title"_s, u"Flood %1"_s.arg(m_floodLeft));
        const QString status = m_floodLeft % 2 == 0 ? u"Paused"_s : u"Playing"_s;
        emitChanged(playerInterface(), {{u"Metadata"_s, tags}, {u"PlaybackStatus"_s, status}});
        emitSeeked(m_player.position().count());
    }
    if (m_floodLeft == 0) {
        forgetAnnounced(u"Metadata"_s);
        forgetAnnounced(u"PlaybackStatus"_s);
        announce();
        return;
    }
    // The next chunk waits until the bus has taken this one. Otherwise all of them would pile up in this process.
    const auto barrier = QDBusMessage::createMethodCall(
        u"org.freedesktop.DBus"_s, u"/org/freedesktop/DBus"_s, u"org.freedesktop.DBus"_s, u"GetId"_s);
    auto *const watcher = new QDBusPendingCallWatcher(m_connection.asyncCall(barrier), this);
    connect(watcher, &QDBusPendingCallWatcher::finished, this, [this, watcher] {
        watcher->deleteLater();
        flood();
    });
}

} // namespace tunedeck::demo
