// SPDX-License-Identifier: MIT
#include "music/mpris/MprisPlayer.h"

#include "music/menuText.h"
#include "music/mpris/bus/BusValue.h"
#include "music/mpris/bus/MprisNames.h"
#include "music/mpris/bus/playersLog.h"
#include "music/mpris/choice/PlayerPin.h"

#include <algorithm>

namespace tunedeck {

namespace {

/// Longest time that a read waits for a player that is not responding. A read that was not answered in time is repeated
/// at once, so that a frozen player finds one in its inbox the moment it thaws.
constexpr Milliseconds longestDeadline{8'000};
/// Changes come in bursts, one signal for each property.
constexpr Milliseconds burst{40};
constexpr Milliseconds movementOfStopped{400};
/// A player may announce a new name a hundred times a second.
constexpr Milliseconds changesOfName{300};
constexpr Milliseconds sampling{2'000};
constexpr Milliseconds samplingWhereSeeksAreAnnounced{10'000};
/// After this time the mirror listens to positions again after a seek, and a track that began is under way: Elisa
/// reports its beginning for more than a second.
constexpr Milliseconds underWay{1'600};
constexpr Milliseconds patienceWithRefusal{500};
constexpr int maximumRefusals = 5;
constexpr qsizetype maximumInbox = 32;

/// The desktop entry in a player's root properties; empty if it cannot be the name of a file.
QString decodeDesktopEntry(const QVariantMap &properties)
{
    constexpr qsizetype longestFileName = 255;
    const QString entry = bus::text(properties.value(QStringLiteral("DesktopEntry"))).value_or(QString());
    return entry.contains(u'/') || entry.size() > longestFileName ? QString() : entry;
}

} // namespace

MprisPlayer::MprisPlayer(const QDBusConnection &connection, bus::SignalStream &signalsOfPlayers, PlayerAddress address,
    Arrival arrival, Clock clock, QObject *parent)
    : QObject(parent)
    , m_address(std::move(address))
    , m_nameText(menuText(m_address.name))
    , m_clock(std::move(clock))
    , m_calls(connection, m_address.owner, this)
    , m_signals(signalsOfPlayers, m_address.owner, this)
    , m_propertyTypes(m_address.name)
    , m_playingPlaylist(std::make_shared<PlayingPlaylist>(playerFamily(m_address.name)))
    , m_readDeadline(bus::deadline)
{
    if (arrival == Arrival::JustCame) {
        m_mirror.distrustFirstReport();
    }
    m_readSoon.setSingleShot(true);
    m_readSoon.setInterval(burst);
    connect(&m_readSoon, &QTimer::timeout, this, &MprisPlayer::read);
    m_askSoon.setSingleShot(true);
    m_askSoon.setInterval(changesOfName);
    connect(&m_askSoon, &QTimer::timeout, this, &MprisPlayer::askWhatItIs);
    m_settle.setObjectName(QStringLiteral("settleTimer"));
    m_settle.setSingleShot(true);
    m_settle.setTimerType(Qt::PreciseTimer);
    connect(&m_settle, &QTimer::timeout, this, [this] {
        const PlayerMirror::Changes changes = m_mirror.settle(now());
        if (changes.userInfo) {
            read();
        }
        apply(changes);
    });
    m_sample.setObjectName(QStringLiteral("sampleTimer"));
    connect(&m_sample, &QTimer::timeout, this, &MprisPlayer::sample);
    m_sampleUnderWay.setObjectName(QStringLiteral("underWayTimer"));
    m_sampleUnderWay.setSingleShot(true);
    m_sampleUnderWay.setInterval(underWay);
    connect(&m_sampleUnderWay, &QTimer::timeout, this, &MprisPlayer::sample);

    connect(&m_calls, &PlayerCalls::respondingChanged, this, &MprisPlayer::handleRespondingChanged);
    connect(&m_commands, &PlayerCommands::mirrorChanged, this, &MprisPlayer::apply);
    connect(&m_commands, &PlayerCommands::positionSent, this, [this] { m_sampleUnderWay.start(); });
    connect(&m_commands, &PlayerCommands::effectExpected, this, &MprisPlayer::readAfter);

    connect(&m_signals, &bus::PlayerSignals::received, this, &MprisPlayer::onSignal);
    connect(&m_signals, &bus::PlayerSignals::missed, this, &MprisPlayer::handleMissed);

    chooseDestination();
    askWhatItIs();
    read();
}

QString MprisPlayer::identity() const
{
    return m_identity.isEmpty() ? m_nameText : m_identity;
}

void MprisPlayer::setSampled(bool isSampled)
{
    m_isSampled = isSampled;
    if (isSampled) {
        m_mirror.trustNextSample();
        sample();
    }
    updateSampling();
}

void MprisPlayer::refresh()
{
    m_mirror.trustNextSample();
    read();
}

void MprisPlayer::setSharesConnection(bool sharesConnection)
{
    if (std::exchange(m_address.sharesConnection, sharesConnection) == sharesConnection) {
        return;
    }
    chooseDestination();
    // Its words until now may have been about another player.
    askWhatItIs();
    refresh();
}

// Reports of the player

void MprisPlayer::chooseDestination()
{
    m_calls.addressByName(m_address.sharesConnection ? mpris::namePrefix + m_address.name : QString());
}

void MprisPlayer::askWhatItIs()
{
    m_calls.getAll(mpris::rootInterface, [this](const bus::Answer &answer) {
        if (answer.isError() && !m_identity.isEmpty()) {
            return;
        }
        const QVariantMap properties = bus::plainMap(answer.argument(0));
        m_desktopEntry = decodeDesktopEntry(properties);
        m_canRaise = bus::boolean(properties.value(QStringLiteral("CanRaise"))).value_or(false);
        m_identity = menuText(bus::text(properties.value(QStringLiteral("Identity"))).value_or(QString()));
        Q_EMIT identityChanged();
    });
}

void MprisPlayer::askWhatItIsSoon()
{
    if (!m_askSoon.isActive()) {
        m_askSoon.start();
    }
}

void MprisPlayer::read()
{
    m_readSoon.stop();
    if (m_readUnderWay) {
        m_readsAgain = true;
        return;
    }
    m_readUnderWay = true;
    m_calls.getAll(mpris::playerInterface, [this](const bus::Answer &answer) { handleRead(answer); }, m_readDeadline);
}

void MprisPlayer::handleRead(const bus::Answer &answer)
{
    // Announcements from before the answer are older.
    handleInbox();
    m_readUnderWay = false;
    const bool isFirstAnswer = m_attachment == Attachment::Unasked;
    if (answer.isError()) {
        handleFailedRead(answer);
    } else {
        applyRead(bus::plainMap(answer.argument(0)));
    }
    if (isFirstAnswer) {
        if (m_attachment == Attachment::Unasked) {
            m_attachment = Attachment::Waiting;
        }
        Q_EMIT asked();
    }
}

void MprisPlayer::readAfter(Milliseconds delay)
{
    auto *later = new QTimer(this);
    later->setSingleShot(true);
    later->setTimerType(Qt::PreciseTimer);
    connect(later, &QTimer::timeout, this, [this, later] {
        later->deleteLater();
        read();
    });
    later->start(delay);
}

void MprisPlayer::applyRead(const QVariantMap &properties)
{
    m_readDeadline = bus::deadline;
    m_propertyTypes.check(properties);
    // Lollypop answers with an empty map for an interface that it does not have.
    if (!isAttached() && !properties.contains(QStringLiteral("PlaybackStatus"))) {
        return;
    }
    const PlayerMirror::Changes changes = m_mirror.read(decodePlayerProperties(properties), now());
    if (std::exchange(m_attachment, Attachment::Attached) != Attachment::Attached) {
        qCDebug(playersLog).noquote() << loggable(m_address.name) << "at" << owner() << "is attached";
        Q_EMIT attached();
        if (m_mirror.mayPlayThoughStopped()) {
            readAfter(movementOfStopped);
        }
    }
    apply(changes);
    if (std::exchange(m_readsAgain, false)) {
        read();
    } else if (m_mirror.isInDoubt()) {
        m_readSoon.start();
    }
}

void MprisPlayer::handleFailedRead(const bus::Answer &answer)
{
    if (answer.isUnanswered()) {
        m_readDeadline = std::min(m_readDeadline * 2, longestDeadline);
        read();
        return;
    }
    qCDebug(playersLog).noquote() << loggable(m_address.name) << "at" << owner()
                                  << "refused to be read:" << loggable(answer.errorName)
                                  << loggable(answer.errorMessage);
    if (!isAttached() && ++m_refusals < maximumRefusals) {
        // Players take their name before they are ready to answer.
        readAfter(patienceWithRefusal);
    }
    if (std::exchange(m_readsAgain, false)) {
        readSoon();
    }
}

void MprisPlayer::sample()
{
    if (isAttached() && isResponding()) {
        // Totem's volume, cmus' shuffle and VLC's song of a station change without an announcement. And Celluloid
        // aborts when it is asked for a property that it does not list, so it is asked for all that it lists.
        read();
    }
}

void MprisPlayer::onSignal(const bus::PlayerSignal &signal)
{
    if (signal.member == u"PropertiesChanged") {
        const QString interface = signal.arguments.value(0).toString();
        if (interface == mpris::rootInterface) {
            askWhatItIsSoon();
        }
        if (interface != mpris::playerInterface) {
            return;
        }
    }
    // A player that floods the bus fills one turn of the event loop with signals. The last few are enough, as a full
    // read follows.
    if (m_inbox.isEmpty()) {
        QMetaObject::invokeMethod(this, &MprisPlayer::handleInbox, Qt::QueuedConnection);
    } else if (m_inbox.size() == maximumInbox) {
        m_inbox.removeFirst();
    }
    m_inbox.append(signal);
}

void MprisPlayer::handleInbox()
{
    const QList<bus::PlayerSignal> inbox = std::exchange(m_inbox, {});
    if (inbox.isEmpty()) {
        return;
    }
    m_calls.noteSignOfLife();
    if (m_address.sharesConnection) {
        m_mirror.trustNextSample();
        readSoon();
        return;
    }
    for (const bus::PlayerSignal &signal : inbox) {
        if (signal.member == u"Seeked") {
            handleSeeked(signal.arguments.value(0));
        } else {
            handlePropertiesChanged(bus::plainMap(signal.arguments.value(1)));
        }
    }
}

void MprisPlayer::handleMissed()
{
    // Anything may have been announced: another name, or a seek.
    m_mirror.trustNextSample();
    readSoon();
    askWhatItIsSoon();
}

void MprisPlayer::readSoon()
{
    if (!m_readSoon.isActive()) {
        m_readSoon.start();
    }
}

void MprisPlayer::handlePropertiesChanged(const QVariantMap &properties)
{
    readSoon();
    if (!isAttached()) {
        return;
    }
    m_propertyTypes.check(properties);
    const PlayerReport report = decodePlayerProperties(properties);
    const PlayerMirror::Changes changes = m_mirror.announced(report, now());
    if (report.track && m_mirror.mayPlayThoughStopped()) {
        readAfter(movementOfStopped);
    }
    apply(changes);
}

void MprisPlayer::handleSeeked(const QVariant &microseconds)
{
    const std::optional<double> position = decodePosition(microseconds);
    if (!position || !isAttached()) {
        return;
    }
    const PlayerMirror::Changes changes = m_mirror.seeked(*position, now());
    if (changes.settings) {
        m_sampleUnderWay.start();
    }
    apply(changes);
}

void MprisPlayer::handleRespondingChanged(bool responding)
{
    if (responding) {
        m_readDeadline = bus::deadline;
    }
    m_mirror.setResponding(responding, now());
    read();
    updateSampling();
    Q_EMIT respondingChanged(responding);
}

void MprisPlayer::apply(PlayerMirror::Changes changes)
{
    scheduleSettling();
    updateSampling();
    if (changes.userInfo && m_mirror.status() == PlaybackStatus::Playing) {
        m_sampleUnderWay.start();
    }
    if (m_isSampled && m_mirror.isPositionInDoubt() && !m_sampleUnderWay.isActive()) {
        m_sampleUnderWay.start();
    }
    if (changes.status) {
        m_playingPlaylist->setStopped(m_mirror.status() == PlaybackStatus::Stopped);
    }
    if (changes.userInfo || changes.settings || changes.status || changes.controls) {
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
    if (!m_isSampled || !isResponding() || m_mirror.status() != PlaybackStatus::Playing) {
        m_sample.stop();
        return;
    }
    const Milliseconds interval =
        m_mirror.announcesSeeks() && !m_mirror.track().isLiveStream() ? samplingWhereSeeksAreAnnounced : sampling;
    if (!m_sample.isActive() || m_sample.intervalAsDuration() != interval) {
        m_sample.start(interval);
    }
}

} // namespace tunedeck
