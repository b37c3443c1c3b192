// SPDX-License-Identifier: MIT
#include "UpdateServer.h"

#include <QFile>
#include <QSslCertificate>
#include <QSslConfiguration>
#include <QSslKey>
#include <QSslSocket>
#include <QTimer>

namespace tunedeck {

namespace {
QString pathOf(const QString &name)
{
    return QStringLiteral(UPDATES_TEST_FOLDER) + u'/' + name;
}

QByteArray contentOf(const QString &path)
{
    QFile file(path);
    return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray();
}
} // namespace

UpdateServer::UpdateServer()
{
    QSslConfiguration configuration = QSslConfiguration::defaultConfiguration();
    configuration.setLocalCertificate(QSslCertificate(contentOf(updateServerCertificate())));
    configuration.setPrivateKey(QSslKey(contentOf(pathOf(QStringLiteral("server-key.pem"))), QSsl::Ec));
    m_server.setSslConfiguration(configuration);
    connect(&m_server, &QTcpServer::pendingConnectionAvailable, this, &UpdateServer::accept);
    m_server.listen(QHostAddress::LocalHost);
}

QUrl UpdateServer::url(const QString &path) const
{
    return QUrl(QStringLiteral("https://127.0.0.1:%1%2").arg(m_server.serverPort()).arg(path));
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
    while (auto *socket = qobject_cast<QSslSocket *>(m_server.nextPendingConnection())) {
        connect(socket, &QSslSocket::readyRead, this, [this, socket] { read(*socket); });
        ++m_openConnections;
        connect(socket, &QSslSocket::disconnected, this, [this] { --m_openConnections; });
        connect(socket, &QSslSocket::disconnected, socket, &QObject::deleteLater);
        read(*socket);
    }
}

void UpdateServer::read(QSslSocket &socket)
{
    if (!socket.peek(socket.bytesAvailable()).contains("\r\n\r\n")) {
        return;
    }
    const QByteArray request = socket.readAll();
    m_requests.append(request);
    const QString path = QString::fromUtf8(request.split(' ').value(1));
    send(socket, m_answers.value(path, {{}, "404 Not Found"}));
}

void UpdateServer::send(QSslSocket &socket, const Answer &answer)
{
    const qint64 length = qint64(answer.body.size()) * answer.repetitions;
    const qint64 announced = answer.announcedLength < 0 ? length : answer.announcedLength;
    connect(&socket, &QSslSocket::encryptedBytesWritten, this, [this](qint64 bytes) { m_sentBytes += bytes; });
    socket.write("HTTP/1.1 " + answer.status + "\r\nConnection: close\r\n" + answer.headers);
    const auto sendHeaders = [this, &socket, answer, announced, rest = answer.furtherHeaders]() mutable {
        static const QByteArray further = ("X-Further: " + QByteArray(900, 'x') + "\r\n").repeated(50);
        if (socket.bytesToWrite() + socket.encryptedBytesToWrite() > 0) {
            return;
        }
        if (rest > 0) {
            rest -= further.size();
            socket.write(further);
            return;
        }
        disconnect(&socket, &QSslSocket::encryptedBytesWritten, &socket, nullptr);
        socket.write("Content-Length: " + QByteArray::number(announced) + "\r\n\r\n");
        sendBody(socket, answer);
    };
    connect(&socket, &QSslSocket::encryptedBytesWritten, &socket, sendHeaders);
}

void UpdateServer::sendBody(QSslSocket &socket, const Answer &answer)
{
    const auto sendOn = [&socket, answer, rest = answer.repetitions]() mutable {
        if (socket.bytesToWrite() + socket.encryptedBytesToWrite() > 0) {
            return;
        }
        if (rest-- > 0) {
            QTimer::singleShot(answer.pause, &socket, [&socket, body = answer.body] { socket.write(body); });
        } else if (!answer.staysOpen) {
            socket.disconnectFromHost();
        }
    };
    connect(&socket, &QSslSocket::encryptedBytesWritten, &socket, sendOn);
}

QString updateServerCertificate()
{
    return pathOf(QStringLiteral("server-certificate.pem"));
}

} // namespace tunedeck
