// SPDX-License-Identifier: MIT
#include "music/mpris/bus/PlayerSignals.h"

#include "music/mpris/bus/BusValue.h"
#include "music/mpris/bus/Instant.h"
#include "music/mpris/bus/MprisNames.h"
#include "platform/readingThread.h"

#include <QDBusMessage>
#include <QThread>

#include <utility>

namespace tunedeck::bus {

namespace {
/// No player has more to say than 32 signals in this time.
constexpr Milliseconds whileForSignals{20};
constexpr QLatin1String propertiesChanged("PropertiesChanged");
constexpr QLatin1String seeked("Seeked");
const char *const handler = SLOT(handle(QDBusMessage));
} // namespace

/// Receives signals on the thread that reads the bus.
class SignalReader : public QObject {
    Q_OBJECT

public:
    /// Lets `count` further signals through, of which the other thread has room. Call this on the reader's thread.
    void letThrough(int count)
    {
        m_room += count;
        if (std::exchange(m_hasDropped, false)) {
            Q_EMIT dropped();
        }
    }

public Q_SLOTS:
    void handle(const QDBusMessage &signal)
    {
        if (m_room == 0) {
            m_hasDropped = true;
            return;
        }
        --m_room;
        Q_EMIT read({.member = signal.member(), .arguments = plainArguments(signal)});
    }

Q_SIGNALS:
    void read(const tunedeck::bus::PlayerSignal &signal);
    void dropped();

private:
    int m_room = PlayerSignals::mostInAWhile;
    bool m_hasDropped = false;
};

PlayerSignals::PlayerSignals(const QDBusConnection &connection, const QString &owner, QObject *parent)
    : QObject(parent)
    , m_bus(connection)
    , m_owner(owner)
    , m_reader(new SignalReader)
{
    m_while.setSingleShot(true);
    m_while.setInterval(whileForSignals);
    connect(&m_while, &QTimer::timeout, this, &PlayerSignals::makeRoom);
    connect(m_reader, &SignalReader::read, this, &PlayerSignals::handle, Qt::QueuedConnection);
    connect(m_reader, &SignalReader::dropped, this, &PlayerSignals::missed, Qt::QueuedConnection);
    if (QThread *thread = readingThread(connection)) {
        m_reader->moveToThread(thread);
    }
    m_bus.connect(m_owner, mpris::objectPath, mpris::propertiesInterface, propertiesChanged, m_reader, handler);
    m_bus.connect(m_owner, mpris::objectPath, mpris::playerInterface, seeked, m_reader, handler);
}

PlayerSignals::~PlayerSignals()
{
    m_bus.disconnect(m_owner, mpris::objectPath, mpris::propertiesInterface, propertiesChanged, m_reader, handler);
    m_bus.disconnect(m_owner, mpris::objectPath, mpris::playerInterface, seeked, m_reader, handler);
    // Qt waits on the reading thread when a receiver is destroyed, and would wait for itself.
    QObject::disconnect(m_reader, &QObject::destroyed, nullptr, nullptr);
    m_reader->deleteLater();
}

void PlayerSignals::handle(const PlayerSignal &signal)
{
    if (m_received++ == 0) {
        m_while.start();
    }
    Q_EMIT received(signal);
}

void PlayerSignals::makeRoom()
{
    QMetaObject::invokeMethod(
        m_reader, [reader = m_reader, count = m_received] { reader->letThrough(count); }, Qt::QueuedConnection);
    m_received = 0;
}

} // namespace tunedeck::bus

#include "PlayerSignals.moc"
