// SPDX-License-Identifier: MIT
#include "music/mpris/bus/BusCall.h"

#include "music/mpris/bus/BusValue.h"
#include "music/mpris/bus/MprisNames.h"
#include "platform/bus/readingThread.h"

#include <QDBusPendingCallWatcher>
#include <QThread>

namespace tunedeck::bus {

namespace {

/// Unpacks an answer of any size on the thread that reads the connection, and releases it there. The other threads get
/// what is left.
class AnswerReader : public QObject {
    Q_OBJECT

Q_SIGNALS:
    void read(const tunedeck::bus::Answer &answer);
};

Answer answerFrom(const QDBusMessage &reply, bool isOfPlayer)
{
    Answer answer;
    if (reply.type() == QDBusMessage::ErrorMessage) {
        answer.error = QDBusError(reply).type();
        answer.errorName = reply.errorName();
        answer.errorMessage = reply.errorMessage().left(maximumTextLength);
    } else {
        answer.arguments = isOfPlayer ? plainArguments(reply) : reply.arguments();
    }
    return answer;
}

} // namespace

QDBusMessage playerCall(
    const QString &owner, const QString &interface, const QString &method, const QVariantList &arguments)
{
    QDBusMessage call = QDBusMessage::createMethodCall(owner, mpris::objectPath, interface, method);
    call.setAutoStartService(false);
    call.setArguments(arguments);
    return call;
}

QDBusMessage daemonCall(const QString &method, const QVariantList &arguments)
{
    QDBusMessage call = QDBusMessage::createMethodCall(mpris::busService, mpris::busPath, mpris::busService, method);
    call.setArguments(arguments);
    return call;
}

bool Answer::isUnanswered() const
{
    return error == QDBusError::NoReply || error == QDBusError::Timeout || error == QDBusError::TimedOut;
}

bool Answer::isUndelivered() const
{
    // Qt has no number for the last one.
    return error == QDBusError::ServiceUnknown || error == QDBusError::Disconnected || error == QDBusError::AccessDenied
        || error == QDBusError::LimitsExceeded || errorName == u"org.freedesktop.DBus.Error.NameHasNoOwner";
}

PendingCall::PendingCall(
    const QDBusConnection &connection, const QDBusMessage &call, Milliseconds patience, QObject *parent)
    : QObject(parent)
{
    auto *reader = new AnswerReader;
    m_reader = reader;
    connect(reader, &AnswerReader::read, this, &PendingCall::answered, Qt::QueuedConnection);
    auto *watcher = new QDBusPendingCallWatcher(connection.asyncCall(call, int(patience.count())), reader);
    const bool isForPlayer = call.service() != mpris::busService;
    connect(watcher, &QDBusPendingCallWatcher::finished, reader, [reader, watcher, isForPlayer] {
        watcher->deleteLater();
        Q_EMIT reader->read(answerFrom(watcher->reply(), isForPlayer));
    });
    if (QThread *thread = readingThread(connection)) {
        reader->moveToThread(thread);
    }
}

PendingCall::~PendingCall()
{
    m_reader->deleteLater();
}

void send(const QDBusConnection &connection, const QDBusMessage &call, QObject *context, const AnswerHandler &handler,
    Milliseconds patience)
{
    auto *pending = new PendingCall(connection, call, patience, context);
    QObject::connect(pending, &PendingCall::answered, context, [pending, handler](const Answer &answer) {
        pending->deleteLater();
        handler(answer);
    });
}

} // namespace tunedeck::bus

#include "BusCall.moc"
