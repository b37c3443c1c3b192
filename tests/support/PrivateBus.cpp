// SPDX-License-Identifier: MIT
#include "PrivateBus.h"

#include "endWithParent.h"

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
    m_daemon.terminate();
    m_daemon.waitForFinished(10'000);
}

bool PrivateBus::isRunning() const
{
    return !m_address.isEmpty() && m_daemon.state() == QProcess::Running;
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
