// SPDX-License-Identifier: MIT
#include "PrivateBus.h"

#include "endWithParent.h"

#include <csignal>

namespace tunedeck {

PrivateBus::PrivateBus()
    : PrivateBus(QStringLiteral("unix:tmpdir=/tmp"))
{
}

PrivateBus::PrivateBus(const QString &address)
{
    endWithParent(m_daemon);
    m_daemon.start(QStringLiteral("dbus-daemon"),
        {QStringLiteral("--session"), QStringLiteral("--nofork"), QStringLiteral("--nopidfile"),
            QStringLiteral("--print-address=1"), QStringLiteral("--address=") + address});
    while (m_daemon.state() != QProcess::NotRunning && !m_daemon.canReadLine()) {
        if (!m_daemon.waitForReadyRead(10'000)) {
            return;
        }
    }
    m_address = QString::fromUtf8(m_daemon.readLine()).trimmed();
}

PrivateBus::~PrivateBus()
{
    thaw();
    m_daemon.terminate();
    m_daemon.waitForFinished(10'000);
}

bool PrivateBus::isRunning() const
{
    return !m_address.isEmpty() && m_daemon.state() == QProcess::Running;
}

void PrivateBus::freeze() const
{
    ::kill(pid_t(m_daemon.processId()), SIGSTOP);
}

void PrivateBus::thaw() const
{
    if (m_daemon.state() != QProcess::NotRunning) {
        ::kill(pid_t(m_daemon.processId()), SIGCONT);
    }
}

QString PrivateBus::address() const
{
    return m_address;
}

QDBusConnection PrivateBus::connect(const QString &name) const
{
    return QDBusConnection::connectToBus(m_address, name);
}

} // namespace tunedeck
