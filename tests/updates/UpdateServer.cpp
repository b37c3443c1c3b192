// SPDX-License-Identifier: MIT
#include "UpdateServer.h"

#include <QFile>
#include <QSslCertificate>
#include <QSslConfiguration>
#include <QSslKey>
#include <QSslServer>
#include <QTcpSocket>

namespace tunedeck {

namespace {
QByteArray contentOf(const QString &name)
{
    QFile file(QStringLiteral(UPDATES_TEST_FOLDER) + u'/' + name);
    return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray();
}

std::unique_ptr<QTcpServer> secureServer()
{
    QSslConfiguration configuration = QSslConfiguration::defaultConfiguration();
    configuration.setLocalCertificate(QSslCertificate(updateServerCertificate()));
    configuration.setPrivateKey(QSslKey(contentOf(QStringLiteral("server-key.pem")), QSsl::Ec));
    auto server = std::make_unique<QSslServer>();
    server->setSslConfiguration(configuration);
    return server;
}
} // namespace

UpdateServer::UpdateServer(bool isSecure)
    : m_isSecure(isSecure)
    , m_server(isSecure ? secureServer() : std::make_unique<QTcpServer>())
{
    connect(m_server.get(), &QTcpServer::pendingConnectionAvailable, this, &UpdateServer::accept);
    m_server->listen(QHostAddress::LocalHost);
}

QUrl UpdateServer::url(const QString &path) const
{
    const QString scheme = m_isSecure ? QStringLiteral("https") : QStringLiteral("http");
    return QUrl(QStringLiteral("%1://127.0.0.1:%2%3").arg(scheme).arg(m_server->serverPort()).arg(path));
}

void UpdateServer::setAnswer(const QString &path, const Answer &answer)
{
    m_answers.insert(path, answer);
}

void UpdateServer::redirect(const QString &path, const QUrl &target)
{
    m_answers.insert(path, {{}, "302 Found", "Location: " + target.toEncoded() + "\r\n"});
}

void UpdateServer::accept()
{
    while (QTcpSocket *socket = m_server->nextPendingConnection()) {
        connect(socket, &QTcpSocket::readyRead, this, [this, socket] { read(*socket); });
        ++m_openConnections;
        connect(socket, &QTcpSocket::disconnected, this, [this] { --m_openConnections; });
        connect(socket, &QTcpSocket::disconnected, socket, &QObject::deleteLater);
        read(*socket);
    }
}

void UpdateServer::read(QTcpSocket &socket)
{
    if (!socket.peek(socket.bytesAvailable()).contains("\r\n\r\n")) {
        return;
    }
    const QByteArray request = socket.readAll();
    m_requests.append(request);
    const QString path = QString::fromUtf8(request.split(' ').value(1));
    send(socket, m_answers.value(path, {{}, "404 Not Found"}));
}

void UpdateServer::send(QTcpSocket &socket, const Answer &answer)
{
    const qint64 length = qint64(answer.body.size()) * answer.repetitions;
    const qint64 announced = answer.announcedLength < 0 ? length : answer.announcedLength;
    socket.write("HTTP/1.1 " + answer.status + "\r\nConnection: close\r\n" + answer.headers
        + "Content-Length: " + QByteArray::number(announced) + "\r\n\r\n");
    const auto sendOn = [&socket, answer, rest = answer.repetitions]() mutable {
        if (socket.bytesToWrite() > 0) {
            return;
        }
        if (rest-- > 0) {
            socket.write(answer.body);
        } else if (!answer.staysOpen) {
            socket.disconnectFromHost();
        }
    };
    connect(&socket, &QTcpSocket::bytesWritten, this, [this](qint64 bytes) { m_sentBytes += bytes; });
    connect(&socket, &QTcpSocket::bytesWritten, &socket, sendOn);
}

QByteArray updateServerCertificate()
{
    return contentOf(QStringLiteral("server-certificate.pem"));
}

} // namespace tunedeck
