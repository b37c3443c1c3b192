// SPDX-License-Identifier: MIT
#include "platform/bus/IncomingCalls.h"

#include "platform/bus/isSmallMessage.h"
#include "platform/bus/readingThread.h"

#include <QDBusError>
#include <QDBusVirtualObject>
#include <QLatin1String>

#include <atomic>
#include <utility>

namespace tunedeck {

namespace {
constexpr int mostWaiting = 64;
constexpr QLatin1String introspectable("org.freedesktop.DBus.Introspectable");
} // namespace

/// Receives calls on the thread that reads the bus.
class CallReader : public QDBusVirtualObject {
    Q_OBJECT

public:
    explicit CallReader(QString introspection)
        : m_introspection(std::move(introspection))
    {
    }

    [[nodiscard]] QString introspect(const QString & /*path*/) const override { return m_introspection; }

    bool handleMessage(const QDBusMessage &call, const QDBusConnection &connection) override
    {
        const bool isSmall = isSmallMessage(call);
        if (isSmall && call.interface() == introspectable) {
            // Qt answers with introspect().
            return false;
        }
        if (isSmall && m_waiting < mostWaiting) {
            ++m_waiting;
            Q_EMIT read(call);
        } else if (call.isReplyRequired()) {
            connection.send(call.createErrorReply(QDBusError::LimitsExceeded, QStringLiteral("Too much")));
        }
        return true;
    }

    /// Call this on any thread after a call has been handled.
    void makeRoom() { --m_waiting; }

Q_SIGNALS:
    void read(const QDBusMessage &call);

private:
    const QString m_introspection;
    std::atomic<int> m_waiting = 0;
};

IncomingCalls::IncomingCalls(
    const QDBusConnection &bus, const QString &path, const QString &introspection, QObject *parent)
    : QObject(parent)
    , m_bus(bus)
    , m_path(path)
    , m_reader(new CallReader(introspection))
{
    connect(m_reader.get(), &CallReader::read, this, &IncomingCalls::handle, Qt::QueuedConnection);
    moveToReadingThread(*m_reader, m_bus);
    m_bus.registerVirtualObject(m_path, m_reader.get());
}

IncomingCalls::~IncomingCalls()
{
    m_bus.unregisterObject(m_path);
}

void IncomingCalls::answer(const QDBusMessage &call, const QVariantList &values)
{
    if (call.isReplyRequired()) {
        m_bus.send(call.createReply(values));
    }
    releaseWhereRead(m_bus, call);
}

void IncomingCalls::refuse(const QDBusMessage &call, const QString &error, const QString &reason)
{
    if (call.isReplyRequired()) {
        m_bus.send(call.createErrorReply(error, reason));
    }
    releaseWhereRead(m_bus, call);
}

void IncomingCalls::refuse(const QDBusMessage &call, QDBusError::ErrorType error, const QString &reason)
{
    refuse(call, QDBusError::errorString(error), reason);
}

void IncomingCalls::handle(const QDBusMessage &call)
{
    m_reader->makeRoom();
    Q_EMIT called(call);
}

} // namespace tunedeck

#include "IncomingCalls.moc"
