// SPDX-License-Identifier: MIT
#include "DemoPlayerProcess.h"

#include "support/PrivateBus.h"
#include "support/endWithParent.h"

#include <QDBusMessage>

#include <csignal>

namespace tunedeck {

DemoPlayerProcess::DemoPlayerProcess(
    const PrivateBus &bus, const QDBusConnection &control, const QStringList &arguments)
    : m_control(control)
    , m_service(QStringLiteral("org.mpris.MediaPlayer2.tunedeckdemo"))
{
    if (const qsizetype name = arguments.indexOf(QStringLiteral("--name")); name >= 0) {
        m_service = QStringLiteral("org.mpris.MediaPlayer2.") + arguments.value(name + 1);
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
    return control(QStringLiteral("Script"), {line}).type() == QDBusMessage::ReplyMessage;
}

QStringList DemoPlayerProcess::takeCalls() const
{
    return control(QStringLiteral("TakeCalls"), {}).arguments().value(0).toStringList();
}

QStringList DemoPlayerProcess::takeCommands() const
{
    QStringList calls = takeCalls();
    calls.removeIf([](const QString &call) { return call.startsWith(u"Get"); });
    return calls;
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

QDBusMessage DemoPlayerProcess::control(const QString &method, const QVariantList &arguments) const
{
    QDBusMessage message = QDBusMessage::createMethodCall(
        m_service, QStringLiteral("/org/mpris/MediaPlayer2"), QStringLiteral("org.tunedeck.DemoPlayer"), method);
    message.setArguments(arguments);
    return m_control.call(message);
}

} // namespace tunedeck
