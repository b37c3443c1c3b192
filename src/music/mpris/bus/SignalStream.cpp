// SPDX-License-Identifier: MIT
#include "music/mpris/bus/SignalStream.h"

#include "music/mpris/bus/BusValue.h"
#include "music/mpris/bus/Instant.h"
#include "music/mpris/bus/MprisNames.h"
#include "music/mpris/bus/PlayerSignals.h"

#include <QDBusMessage>
#include <QLatin1String>

#include <algorithm>
#include <mutex>
#include <utility>

namespace tunedeck::bus {

namespace {
/// No player has more to say than 32 signals in this time.
constexpr Milliseconds whileForSignals{20};
constexpr QLatin1String propertiesChanged("PropertiesChanged");
constexpr QLatin1String seeked("Seeked");
const char *const handler = SLOT(handle(QDBusMessage));
} // namespace

/// Receives signals on the thread that reads the bus. The other functions may be called on any thread.
class PlayerSignalReader : public QObject {
    Q_OBJECT

public:
    void admit(const QString &owner)
    {
        const std::lock_guard lock(m_mutex);
        m_doors.insert(owner, {});
    }
    void forget(const QString &owner)
    {
        const std::lock_guard lock(m_mutex);
        m_doors.remove(owner);
    }
    /// Lets `count` further signals through. Returns whether signals have been dropped since the last call.
    [[nodiscard]] bool letThrough(const QString &owner, int count)
    {
        const std::lock_guard lock(m_mutex);
        const auto door = m_doors.find(owner);
        if (door == m_doors.end()) {
            return false;
        }
        door->room = std::min(door->room + count, SignalStream::mostInAWhile);
        return std::exchange(door->hasDropped, false);
    }

public Q_SLOTS:
    void handle(const QDBusMessage &signal)
    {
        if (takeRoom(signal.service())) {
            Q_EMIT read(signal.service(), {.member = signal.member(), .arguments = plainArguments(signal)});
        }
    }

Q_SIGNALS:
    void read(const QString &owner, const tunedeck::bus::PlayerSignal &signal);

private:
    struct Door {
        int room = SignalStream::mostInAWhile;
        bool hasDropped = false;
    };

    bool takeRoom(const QString &owner)
    {
        const std::lock_guard lock(m_mutex);
        const auto door = m_doors.find(owner);
        if (door == m_doors.end()) {
            return false;
        }
        if (door->room == 0) {
            door->hasDropped = true;
            return false;
        }
        --door->room;
        return true;
    }

    std::mutex m_mutex;
    QHash<QString, Door> m_doors; ///< by the unique name of the connection
};

SignalStream::SignalStream(const QDBusConnection &connection, QObject *parent)
    : QObject(parent)
    , m_bus(connection)
    , m_reader(new PlayerSignalReader)
{
    m_while.setSingleShot(true);
    m_while.setInterval(whileForSignals);
    connect(&m_while, &QTimer::timeout, this, &SignalStream::makeRoom);
    connect(m_reader.get(), &PlayerSignalReader::read, this, &SignalStream::handle, Qt::QueuedConnection);
    moveToReadingThread(*m_reader, connection);
    // Given the name of a sender, Qt would ask the bus for its owner and wait for the answer, on this thread.
    m_bus.connect(QString(), mpris::objectPath, mpris::propertiesInterface, propertiesChanged, m_reader.get(), handler);
    m_bus.connect(QString(), mpris::objectPath, mpris::playerInterface, seeked, m_reader.get(), handler);
}

SignalStream::~SignalStream()
{
    m_bus.disconnect(
        QString(), mpris::objectPath, mpris::propertiesInterface, propertiesChanged, m_reader.get(), handler);
    m_bus.disconnect(QString(), mpris::objectPath, mpris::playerInterface, seeked, m_reader.get(), handler);
}

void SignalStream::add(const QString &owner, PlayerSignals *listener)
{
    QList<PlayerSignals *> &listeners = m_senders[owner].listeners;
    listeners.append(listener);
    if (listeners.size() == 1) {
        m_reader->admit(owner);
    }
}

void SignalStream::remove(const QString &owner, PlayerSignals *listener)
{
    QList<PlayerSignals *> &listeners = m_senders[owner].listeners;
    listeners.removeOne(listener);
    if (listeners.isEmpty()) {
        m_senders.remove(owner);
        m_reader->forget(owner);
    }
}

void SignalStream::handle(const QString &owner, const PlayerSignal &signal)
{
    const auto sender = m_senders.find(owner);
    if (sender == m_senders.end()) {
        return;
    }
    ++sender->received;
    if (!m_while.isActive()) {
        m_while.start();
    }
    const QList<PlayerSignals *> listeners = sender->listeners;
    for (PlayerSignals *listener : listeners) {
        Q_EMIT listener->received(signal);
    }
}

void SignalStream::makeRoom()
{
    QList<PlayerSignals *> haveMissed;
    for (const auto &[owner, sender] : m_senders.asKeyValueRange()) {
        const int received = std::exchange(sender.received, 0);
        if (received > 0 && m_reader->letThrough(owner, received)) {
            haveMissed += sender.listeners;
        }
    }
    for (PlayerSignals *listener : std::as_const(haveMissed)) {
        Q_EMIT listener->missed();
    }
}

} // namespace tunedeck::bus

#include "SignalStream.moc"
