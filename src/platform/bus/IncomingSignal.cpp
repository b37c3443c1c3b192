// SPDX-License-Identifier: MIT
#include "platform/bus/IncomingSignal.h"

#include "platform/bus/isSmallMessage.h"

#include <QDBusArgument>
#include <QDBusMessage>
#include <QDBusObjectPath>
#include <QDBusVariant>
#include <QVariantMap>

#include <atomic>
#include <utility>

namespace tunedeck {

namespace {
constexpr int mostWaiting = 64;
constexpr qsizetype longestText = 1'000;
const char *const handler = SLOT(handle(QDBusMessage));

QVariant plainBasic(const QVariant &value)
{
    if (value.metaType() == QMetaType::fromType<QDBusObjectPath>()) {
        return plainBasic(value.value<QDBusObjectPath>().path());
    }
    switch (value.typeId()) {
    case QMetaType::Bool:
    case QMetaType::Int:
    case QMetaType::UInt:
    case QMetaType::LongLong:
    case QMetaType::ULongLong:
    case QMetaType::Double:
        return value;
    case QMetaType::QString:
        return value.toString().size() <= longestText ? value : QVariant();
    default:
        return {};
    }
}

QVariant plain(const QVariant &value)
{
    if (value.metaType() != QMetaType::fromType<QDBusArgument>()) {
        return plainBasic(value);
    }
    const auto argument = value.value<QDBusArgument>();
    if (argument.currentSignature() != u"a{sv}") {
        return {};
    }
    QVariantMap map;
    argument >> map;
    for (QVariant &element : map) {
        element = plainBasic(element);
    }
    return map;
}

QVariantList plainValues(const QVariantList &values)
{
    QVariantList plainOnes;
    for (const QVariant &value : values) {
        plainOnes.append(plain(value));
    }
    return plainOnes;
}
} // namespace

/// Receives a signal on the thread that reads the bus.
class SignalReader : public QObject {
    Q_OBJECT

public:
    /// `sender` is empty for any sender.
    SignalReader(QString sender, QString signature)
        : m_sender(std::move(sender))
        , m_signature(std::move(signature))
    {
    }

    /// Call this on any thread after a signal has been handled.
    void makeRoom() { --m_waiting; }

public Q_SLOTS:
    void handle(const QDBusMessage &signal)
    {
        if (!m_sender.isEmpty() && signal.service() != m_sender) {
            return;
        }
        if (m_waiting < mostWaiting) {
            ++m_waiting;
            const bool isUsable = signal.signature() == m_signature && isSmallMessage(signal);
            Q_EMIT read(signal.service(), isUsable ? plainValues(signal.arguments()) : QVariantList());
        }
    }

Q_SIGNALS:
    void read(const QString &sender, const QVariantList &values);

private:
    const QString m_sender;
    const QString m_signature;
    std::atomic<int> m_waiting = 0;
};

IncomingSignal::IncomingSignal(
    const QDBusConnection &bus, const Origin &origin, const QString &signature, QObject *parent)
    : QObject(parent)
    , m_bus(bus)
    , m_origin(origin)
    , m_reader(new SignalReader(origin.sender, signature))
{
    connect(m_reader.get(), &SignalReader::read, this, &IncomingSignal::handle, Qt::QueuedConnection);
    moveToReadingThread(*m_reader, m_bus);
    // Qt asks the bus for the owner of a sender's name, and this thread would wait for the answer.
    m_bus.connect({}, m_origin.path, m_origin.interface, m_origin.name, m_reader.get(), handler);
}

IncomingSignal::~IncomingSignal()
{
    m_bus.disconnect({}, m_origin.path, m_origin.interface, m_origin.name, m_reader.get(), handler);
}

void IncomingSignal::handle(const QString &sender, const QVariantList &values)
{
    m_reader->makeRoom();
    Q_EMIT came(sender, values);
}

} // namespace tunedeck

#include "IncomingSignal.moc"
