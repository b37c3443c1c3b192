// SPDX-License-Identifier: MIT
#include "DemoPlayerProcess.h"

#include "support/PrivateBus.h"
#include "support/endWithParent.h"

#include <QDBusMessage>

#include <csignal>

namespace tunedeck {

namespace {

QString busName(const QString &player)
{
    return QStringLiteral("org.mpris.MediaPlayer2.") + player;
}

QStringList commandsAmong(QStringList calls)
{
    calls.removeIf([](const QString &call) { return call.startsWith(u"Get"); });
    return calls;
}

} // namespace

DemoPlayerProcess::DemoPlayerProcess(
    const PrivateBus &bus, const QDBusConnection &control, const QStringList &arguments)
    : m_control(control)
    , m_service(busName(QStringLiteral("tunedeckdemo")))
{
    if (const qsizetype name = arguments.indexOf(QStringLiteral("--name")); name >= 0) {
        m_service = busName(arguments.value(name + 1));
    }
    QProcessEnvironment environment = QProcessEnvironment::systemEnvironment();
    environment.insert(QStringLiteral("DBUS_SESSION_BUS_ADDRESS"), bus.address());
    m_process.setProcessEnvironment(environment);
    m_process.setProcessChannelMode(QProcess::ForwardedErrorChannel);
    endWithParent(m_process);
    m_process.start(QStringLiteral(DEMO_PLAYER), arguments);
    m_isReady = m_process.waitForReadyRead(20'000) && m_process.readLine() == "ready\n";
}

DemoPlayerProcess::~DemoPlayerProcess()
{
    thaw();
    m_process.kill();
    m_process.waitForFinished();
}

bool DemoPlayerProcess::isReady() const
{
    return m_isReady;
}

bool DemoPlayerProcess::tell(const QString &line) const
{
    return control(m_service, QStringLiteral("Script"), {line}).type() == QDBusMessage::ReplyMessage;
}

bool DemoPlayerProcess::tell(const QString &name, const QString &line) const
{
    return control(busName(name), QStringLiteral("Script"), {line}).type() == QDBusMessage::ReplyMessage;
}

QStringList DemoPlayerProcess::takeCalls() const
{
    return takeCallsOf(m_service);
}

QStringList DemoPlayerProcess::takeCommands() const
{
    return commandsAmong(takeCalls());
}

QStringList DemoPlayerProcess::takeCommands(const QString &name) const
{
    return commandsAmong(takeCallsOf(busName(name)));
}

void DemoPlayerProcess::freeze() const
{
    ::kill(pid_t(m_process.processId()), SIGSTOP);
}

void DemoPlayerProcess::thaw() const
{
    if (m_process.state() != QProcess::NotRunning) {
        ::kill(pid_t(m_process.processId()), SIGCONT);
    }
}

void DemoPlayerProcess::kill() const
{
    ::kill(pid_t(m_process.processId()), SIGKILL);
}

QStringList DemoPlayerProcess::takeCallsOf(const QString &service) const
{
    return control(service, QStringLiteral("TakeCalls"), {}).arguments().value(0).toStringList();
}

QDBusMessage DemoPlayerProcess::control(
    const QString &service, const QString &method, const QVariantList &arguments) const
{
    QDBusMessage message = QDBusMessage::createMethodCall(
        service, QStringLiteral("/org/mpris/MediaPlayer2"), QStringLiteral("org.tunedeck.DemoPlayer"), method);
    message.setArguments(arguments);
    return m_control.call(message);
}

} // namespace tunedeck
