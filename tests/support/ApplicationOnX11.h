// SPDX-License-Identifier: MIT
#pragma once

#include "support/endWithParent.h"

#include <QApplication>
#include <QProcess>
#include <QString>

namespace tunedeck {

/// An X server without a window manager.
class OwnXServer {
public:
    OwnXServer()
    {
        endWithParent(m_server);
        m_server.start(QStringLiteral("Xvfb"),
            {QStringLiteral("-displayfd"), QStringLiteral("1"), QStringLiteral("-nolisten"), QStringLiteral("tcp"),
                QStringLiteral("-screen"), QStringLiteral("0"), QStringLiteral("1280x720x24")});
        while (!m_server.canReadLine() && m_server.waitForReadyRead()) { }
        qputenv("DISPLAY", ':' + m_server.readLine().trimmed());
        qputenv("QT_QPA_PLATFORM", "xcb");
    }
    ~OwnXServer()
    {
        m_server.terminate();
        m_server.waitForFinished();
    }
    Q_DISABLE_COPY_MOVE(OwnXServer)

private:
    QProcess m_server;
};

/// A test's application on an X server of its own. The server starts before it and ends after it.
class ApplicationOnX11 : private OwnXServer, public QApplication {
public:
    ApplicationOnX11(int &argc, char **argv)
        : QApplication(argc, argv)
    {
    }
};

} // namespace tunedeck
