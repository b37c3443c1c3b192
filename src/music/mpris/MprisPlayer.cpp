// SPDX-License-Identifier: MIT
#include "music/mpris/MprisPlayer.h"

#include "music/mpris/BusValue.h"
#include "music/mpris/MprisNames.h"
#include "music/mpris/PlayerChoice.h"

#include <QDBusObjectPath>
#include <QDBusPendingCallWatcher>
#include <QDBusVariant>
#include <QRegularExpression>

#include <algorithm>
#include <cmath>

namespace tunedeck {

namespace {

using ReadPurpose = PlayerMirror::ReadPurpose;

constexpr Milliseconds deadline{1'000};
/// For how long, at the most, an unanswered question to a player that does not respond is left standing. Asking anew at
/// once keeps one question in the player's inbox, so a frozen player is back the moment it thaws.
constexpr Milliseconds longestDeadline{8'000};
/// Changes come in bursts, one signal for each property.
constexpr Milliseconds burst{40};
/// Some players carry a command out only after they have answered it.
constexpr Milliseconds effect{200};
constexpr Milliseconds volumeEffect{300};
constexpr Milliseconds movementOfStopped{400};
constexpr Milliseconds sampling{2'000};
constexpr Milliseconds samplingWhereSeeksAreAnnounced{10'000};
/// By then the mirror listens to positions again after a seek, and a track that began is under way: some players stand
/// at its beginning for more than a second after they have announced it.
constexpr Milliseconds underWay{1'600};
constexpr Milliseconds patienceWithRefusal{500};
constexpr int maximumRefusals = 5;
constexpr qsizetype maximumInbox = 32;
constexpr double microsecondsPerSecond = 1e6;

bool isError(const QDBusMessage &reply)
{
    return reply.type() == QDBusMessage::ErrorMessage;
}

bool isUnanswered(const QDBusMessage &reply)
{
    const QDBusError::ErrorType error = QDBusError(reply).type();
    return error == QDBusError::NoReply || error == QDBusError::Timeout || error == QDBusError::TimedOut;
}

/// The desktop entry that a player with these root properties names; empty for what cannot be the name of a file.
QString decodeDesktopEntry(const QVariantMap &properties)
{
    constexpr qsizetype longestFileName = 255;
    const QString entry = bus::text(properties.value(QStringLiteral("DesktopEntry"))).value_or(QString());
    return entry.contains(u'/') || entry.size() > longestFileName ? QString() : entry;
}

QVariant argument(const QDBusMessage &message, qsizetype index)
{
    return message.arguments().value(index);
}

/// Track ids come as paths, as texts, or not at all; a seek has to name one that is a path.
QDBusObjectPath trackPath(const QString &trackId)
{
    static const QRegularExpression path(QStringLiteral("^(/[A-Za-z0-9_]+)+$"));
    return QDBusObjectPath(path.match(trackId).hasMatch() ? trackId : QStringLiteral("/"));
}

QString loopText(LoopStatus status)
{
    switch (status) {
    case LoopStatus::None:
        return QStringLiteral("None");
    case LoopStatus::Track:
        return QStringLiteral("Track");
    case LoopStatus::Playlist:
        return QStringLiteral("Playlist");
    }
    return {};
}

} // namespace

MprisPlayer::MprisPlayer(const QDBusConnection &bus, const QString &owner, const QString &name, Arrival arrival,
    Clock clock, QObject *parent)
    : QObject(parent)
    , m_bus(bus)
    , m_owner(owner)
    , m_name(name)
    , m_clock(std::move(clock))
    , m_readDeadline(deadline)
{
    if (arrival == Arrival::JustCame) {
        m_mirror.distrustFirstReport();
    }
    m_readSoon.setSingleShot(true);
    m_readSoon.setInterval(burst);
    connect(&m_readSoon, &QTimer::timeout, this, [this] { read(ReadPurpose::AllButModes); });
    m_settle.setObjectName(QStringLiteral("settleTimer"));
    m_settle.setSingleShot(true);
    m_settle.setTimerType(Qt::PreciseTimer);
    connect(&m_settle, &QTimer::timeout, this, [this] {
        const PlayerMirror::Changes changes = m_mirror.settle(now());
        if (changes.userInfo) {
            read(ReadPurpose::AllButModes);
        }
        apply(changes);
    });
    m_sample.setObjectName(QStringLiteral("sampleTimer"));
    connect(&m_sample, &QTimer::timeout, this, &MprisPlayer::samplePosition);
    m_sampleUnderWay.setObjectName(QStringLiteral("underWayTimer"));
    m_sampleUnderWay.setSingleShot(true);
    m_sampleUnderWay.setInterval(underWay);
    connect(&m_sampleUnderWay, &QTimer::timeout, this, &MprisPlayer::samplePosition);

    subscribe();
    askForProcessId();
    askWhatItIs();
    read(ReadPurpose::Everything);
}

const QString &MprisPlayer::owner() const
{
    return m_owner;
}

const QString &MprisPlayer::name() const
{
    return m_name;
}

std::optional<qint64> MprisPlayer::processId() const
{
    return m_processId;
}

QString MprisPlayer::identity() const
{
    return m_identity.isEmpty() ? m_name : m_identity;
}

const QString &MprisPlayer::desktopEntry() const
{
    return m_desktopEntry;
}

bool MprisPlayer::isAttached() const
{
    return m_isAttached;
}

bool MprisPlayer::hasBeenAsked() const
{
    return m_hasBeenAsked;
}

bool MprisPlayer::isResponding() const
{
    return m_isResponding;
}

const PlayerMirror &MprisPlayer::mirror() const
{
    return m_mirror;
}

void MprisPlayer::setSampled(bool isSampled)
{
    m_isSampled = isSampled;
    if (isSampled) {
        m_mirror.takeNextSample();
        samplePosition();
    }
    updateSampling();
}

void MprisPlayer::readAnew()
{
    m_mirror.takeNextSample();
    read(ReadPurpose::Everything);
}

bool MprisPlayer::askForPlayPause()
{
    if (!takesCommands() || m_playPauseIsUnanswered) {
        return false;
    }
    const bool isPlaying = m_mirror.status() == PlaybackStatus::Playing;
    m_sendsStop = isPlaying && !m_mirror.canPause();
    const PlaybackStatus idle = m_sendsStop ? PlaybackStatus::Stopped : PlaybackStatus::Paused;
    apply(m_mirror.askedForStatus(isPlaying ? idle : PlaybackStatus::Playing, now()));
    return true;
}

void MprisPlayer::sendPlayPause()
{
    m_playPauseIsUnanswered = true;
    callPlayer(
        m_sendsStop ? QStringLiteral("Stop") : QStringLiteral("PlayPause"), {}, [this](const QDBusMessage &reply) {
            m_playPauseIsUnanswered = false;
            if (isError(reply)) {
                apply(m_mirror.commandFailed(now()));
            } else {
                m_mirror.commandAnswered(now());
                scheduleSettling();
            }
        });
}

void MprisPlayer::dropPlayPause()
{
    apply(m_mirror.commandFailed(now()));
}

bool MprisPlayer::next()
{
    return takesCommands() && m_mirror.canGoNext() && sendOnce(QStringLiteral("Next"), m_nextIsUnanswered);
}

bool MprisPlayer::previous()
{
    return takesCommands() && m_mirror.canGoPrevious() && sendOnce(QStringLiteral("Previous"), m_previousIsUnanswered);
}

bool MprisPlayer::setPosition(double seconds)
{
    if (!takesCommands() || !m_mirror.canSeek() || !std::isfinite(seconds)) {
        return false;
    }
    // Beyond the end most players skip to the next track; some do so in the last moment before it, or below 0.
    const double latest = std::max(0.0, m_mirror.track().length.value_or(1e9) - 1);
    const double target = std::clamp(seconds, 0.0, latest);
    m_position.value = target;
    sendWantedPosition();
    apply(m_mirror.askedForPosition(target, now()));
    return true;
}

bool MprisPlayer::setVolume(double volume)
{
    if (!takesCommands() || !m_mirror.volume()) {
        return false;
    }
    m_volume.value = volume;
    sendWantedVolume();
    apply(m_mirror.askedForVolume(volume, now()));
    return true;
}

bool MprisPlayer::setShuffle(bool enabled)
{
    if (!takesCommands()) {
        return false;
    }
    setProperty(QStringLiteral("Shuffle"), enabled,
        [this](const QDBusMessage &) { readAfter(effect, ReadPurpose::Everything); });
    return true;
}

bool MprisPlayer::setLoopStatus(LoopStatus status)
{
    if (!takesCommands()) {
        return false;
    }
    setProperty(QStringLiteral("LoopStatus"), loopText(status),
        [this](const QDBusMessage &) { readAfter(effect, ReadPurpose::Everything); });
    return true;
}

// What the player says

void MprisPlayer::subscribe()
{
    m_bus.connect(m_owner, mpris::objectPath, mpris::propertiesInterface, QStringLiteral("PropertiesChanged"), this,
        SLOT(onPropertiesChanged(QDBusMessage)));
    m_bus.connect(m_owner, mpris::objectPath, mpris::playerInterface, QStringLiteral("Seeked"), this,
        SLOT(onSeeked(QDBusMessage)));
}

void MprisPlayer::askForProcessId()
{
    QDBusMessage message = QDBusMessage::createMethodCall(
        mpris::busService, mpris::busPath, mpris::busService, QStringLiteral("GetConnectionUnixProcessID"));
    message.setArguments({m_owner});
    auto *watcher = new QDBusPendingCallWatcher(m_bus.asyncCall(message, int(deadline.count())), this);
    connect(watcher, &QDBusPendingCallWatcher::finished, this, [this, watcher] {
        watcher->deleteLater();
        if (const std::optional<double> processId = bus::number(argument(watcher->reply(), 0))) {
            m_processId = qint64(*processId);
        }
    });
}

void MprisPlayer::askWhatItIs()
{
    call(mpris::propertiesInterface, QStringLiteral("GetAll"), {mpris::rootInterface}, deadline,
        [this](const QDBusMessage &reply) {
            const QVariantMap properties = bus::plainMap(argument(reply, 0));
            m_desktopEntry = decodeDesktopEntry(properties);
            m_identity = bus::text(properties.value(QStringLiteral("Identity"))).value_or(QString());
            Q_EMIT identityChanged();
        });
}

void MprisPlayer::read(ReadPurpose purpose)
{
    m_readSoon.stop();
    if (m_readIsUnanswered) {
        m_nextRead = m_nextRead == ReadPurpose::Everything ? ReadPurpose::Everything : purpose;
        return;
    }
    m_readIsUnanswered = true;
    m_readPurpose = purpose;
    call(mpris::propertiesInterface, QStringLiteral("GetAll"), {mpris::playerInterface}, m_readDeadline,
        [this](const QDBusMessage &reply) {
            m_readIsUnanswered = false;
            if (isError(reply)) {
                readFailed(reply);
            } else {
                takeRead(reply);
            }
            if (!std::exchange(m_hasBeenAsked, true)) {
                Q_EMIT asked();
            }
        });
}

void MprisPlayer::readAfter(Milliseconds delay, ReadPurpose purpose)
{
    auto *later = new QTimer(this);
    later->setSingleShot(true);
    connect(later, &QTimer::timeout, this, [this, later, purpose] {
        later->deleteLater();
        read(purpose);
    });
    later->start(delay);
}

void MprisPlayer::takeRead(const QDBusMessage &reply)
{
    m_readDeadline = deadline;
    const QVariantMap properties = bus::plainMap(argument(reply, 0));
    // One player answers with an empty map for an interface it does not have.
    if (!m_isAttached && !properties.contains(QStringLiteral("PlaybackStatus"))) {
        return;
    }
    const PlayerMirror::Changes changes = m_mirror.read(decodePlayerProperties(properties), m_readPurpose, now());
    if (!std::exchange(m_isAttached, true)) {
        Q_EMIT attached();
        if (m_mirror.mayPlayThoughStopped()) {
            readAfter(movementOfStopped, ReadPurpose::AllButModes);
        }
    }
    apply(changes);
    if (const auto purpose = std::exchange(m_nextRead, std::nullopt)) {
        read(*purpose);
    }
}

void MprisPlayer::readFailed(const QDBusMessage &reply)
{
    if (isUnanswered(reply)) {
        m_readDeadline = std::min(m_readDeadline * 2, longestDeadline);
        read(ReadPurpose::Everything);
    } else if (!m_isAttached && ++m_refusals < maximumRefusals) {
        // Players take their name before they are ready to answer.
        readAfter(patienceWithRefusal, ReadPurpose::Everything);
    }
}

void MprisPlayer::samplePosition()
{
    if (!m_isAttached || !m_isResponding) {
        return;
    }
    // A stream may change its title without a word. And one player ends when it is asked for a property that it has not
    // listed.
    if (m_mirror.track().isLiveStream() || !m_mirror.tellsPosition()) {
        read(ReadPurpose::AllButModes);
        return;
    }
    call(mpris::propertiesInterface, QStringLiteral("Get"), {mpris::playerInterface, QStringLiteral("Position")},
        deadline, [this](const QDBusMessage &reply) {
            if (const std::optional<double> position = decodePosition(argument(reply, 0));
                position && !isError(reply)) {
                apply(m_mirror.positionRead(*position, now()));
            }
        });
}

void MprisPlayer::onPropertiesChanged(const QDBusMessage &signal)
{
    if (argument(signal, 0).toString() != mpris::playerInterface) {
        return;
    }
    onSignal(signal);
}

void MprisPlayer::onSeeked(const QDBusMessage &signal)
{
    m_announcesSeeks = true;
    onSignal(signal);
}

void MprisPlayer::onSignal(const QDBusMessage &signal)
{
    // A player that floods the bus fills one turn of the event loop with signals. The last few are enough, since a full
    // read follows them.
    if (m_inbox.isEmpty()) {
        QMetaObject::invokeMethod(this, &MprisPlayer::takeInbox, Qt::QueuedConnection);
    } else if (m_inbox.size() == maximumInbox) {
        m_inbox.removeFirst();
    }
    m_inbox.append(signal);
}

void MprisPlayer::takeInbox()
{
    heardFromPlayer();
    const QList<QDBusMessage> inbox = std::exchange(m_inbox, {});
    for (const QDBusMessage &signal : inbox) {
        if (signal.member() == u"Seeked") {
            takeSeeked(signal);
        } else {
            takePropertiesChanged(signal);
        }
    }
}

void MprisPlayer::takePropertiesChanged(const QDBusMessage &signal)
{
    if (!m_readSoon.isActive()) {
        m_readSoon.start();
    }
    if (!m_isAttached) {
        return;
    }
    const PlayerReport report = decodePlayerProperties(bus::plainMap(argument(signal, 1)));
    const PlayerMirror::Changes changes = m_mirror.announced(report, now());
    if (report.track && m_mirror.mayPlayThoughStopped()) {
        readAfter(movementOfStopped, ReadPurpose::AllButModes);
    }
    apply(changes);
}

void MprisPlayer::takeSeeked(const QDBusMessage &signal)
{
    if (const std::optional<double> position = decodePosition(argument(signal, 0)); position && m_isAttached) {
        apply(m_mirror.seeked(*position, now()));
    }
    m_sampleUnderWay.start();
    updateSampling();
}

// What is asked of the player

void MprisPlayer::call(const QString &interface, const QString &method, const QVariantList &arguments,
    Milliseconds patience, const ReplyHandler &handler)
{
    QDBusMessage message = QDBusMessage::createMethodCall(m_owner, mpris::objectPath, interface, method);
    message.setAutoStartService(false);
    message.setArguments(arguments);
    auto *watcher = new QDBusPendingCallWatcher(m_bus.asyncCall(message, int(patience.count())), this);
    connect(watcher, &QDBusPendingCallWatcher::finished, this, [this, watcher, handler] {
        watcher->deleteLater();
        const QDBusMessage reply = watcher->reply();
        if (isError(reply) && isUnanswered(reply)) {
            stopResponding();
        } else if (reply.service() == m_owner) {
            // Otherwise it is the bus that answers, for a player that is gone.
            heardFromPlayer();
        }
        handler(reply);
    });
}

void MprisPlayer::callPlayer(const QString &method, const QVariantList &arguments, const ReplyHandler &handler)
{
    call(mpris::playerInterface, method, arguments, deadline, [this, handler](const QDBusMessage &reply) {
        handler(reply);
        readAfter(effect, ReadPurpose::AllButModes);
    });
}

void MprisPlayer::setProperty(const QString &property, const QVariant &value, const ReplyHandler &handler)
{
    call(mpris::propertiesInterface, QStringLiteral("Set"),
        {mpris::playerInterface, property, QVariant::fromValue(QDBusVariant(value))}, deadline, handler);
}

bool MprisPlayer::sendOnce(const QString &method, bool &isUnansweredYet)
{
    if (isUnansweredYet) {
        return false;
    }
    isUnansweredYet = true;
    callPlayer(method, {}, [&isUnansweredYet](const QDBusMessage &) { isUnansweredYet = false; });
    return true;
}

void MprisPlayer::sendWantedPosition()
{
    if (m_position.isUnanswered || !m_position.value) {
        return;
    }
    const double seconds = *std::exchange(m_position.value, std::nullopt);
    m_position.isUnanswered = true;
    m_sampleUnderWay.start();
    const QVariant path = QVariant::fromValue(trackPath(m_mirror.reportedTrackId()));
    const QVariant microseconds = qlonglong(std::llround(seconds * microsecondsPerSecond));
    call(mpris::playerInterface, QStringLiteral("SetPosition"), {path, microseconds}, deadline,
        [this](const QDBusMessage &) {
            m_position.isUnanswered = false;
            sendWantedPosition();
        });
}

void MprisPlayer::sendWantedVolume()
{
    if (m_volume.isUnanswered || !m_volume.value) {
        return;
    }
    const double volume = *std::exchange(m_volume.value, std::nullopt);
    m_volume.isUnanswered = true;
    setProperty(QStringLiteral("Volume"), volume, [this](const QDBusMessage &) {
        m_volume.isUnanswered = false;
        if (m_volume.value && m_isResponding) {
            sendWantedVolume();
            return;
        }
        m_volume.value.reset();
        m_mirror.volumeAnswered(now());
        scheduleSettling();
        readAfter(volumeEffect, ReadPurpose::AllButModes);
    });
}

bool MprisPlayer::takesCommands() const
{
    return m_isAttached && m_isResponding && m_mirror.canControl();
}

void MprisPlayer::heardFromPlayer()
{
    if (std::exchange(m_isResponding, true)) {
        return;
    }
    m_mirror.setResponding(true, now());
    m_readDeadline = deadline;
    read(ReadPurpose::Everything);
    updateSampling();
    Q_EMIT respondingChanged(true);
}

void MprisPlayer::stopResponding()
{
    if (!std::exchange(m_isResponding, false)) {
        return;
    }
    m_position.value.reset();
    m_mirror.setResponding(false, now());
    updateSampling();
    read(ReadPurpose::Everything);
    Q_EMIT respondingChanged(false);
}

void MprisPlayer::apply(PlayerMirror::Changes changes)
{
    scheduleSettling();
    updateSampling();
    if (changes.userInfo && m_mirror.status() == PlaybackStatus::Playing) {
        m_sampleUnderWay.start();
    }
    if (changes.userInfo || changes.settings || changes.status) {
        Q_EMIT changed(changes);
    }
}

void MprisPlayer::scheduleSettling()
{
    if (const std::optional<Instant> next = m_mirror.nextSettling()) {
        m_settle.start(std::max(Milliseconds(0), std::chrono::ceil<Milliseconds>(*next - now())));
    } else {
        m_settle.stop();
    }
}

void MprisPlayer::updateSampling()
{
    if (!m_isSampled || !m_isResponding || m_mirror.status() != PlaybackStatus::Playing) {
        m_sample.stop();
        return;
    }
    const Milliseconds interval =
        m_announcesSeeks && !m_mirror.track().isLiveStream() ? samplingWhereSeeksAreAnnounced : sampling;
    if (!m_sample.isActive() || m_sample.intervalAsDuration() != interval) {
        m_sample.start(interval);
    }
}

} // namespace tunedeck
