// SPDX-License-Identifier: MIT
#pragma once

#include <QByteArray>
#include <QByteArrayList>
#include <QHash>
#include <QObject>
#include <QTcpServer>
#include <QUrl>

#include <memory>

class QTcpSocket;

namespace tunedeck {

/// A web server for tests, with an answer for each path.
class UpdateServer : public QObject {
    Q_OBJECT

public:
    struct Answer {
        QByteArray body = {};
        QByteArray status = "200 OK";
        /// Complete lines with their line ends.
        QByteArray headers = {};
        /// How many times the body is sent.
        int repetitions = 1;
        /// The announced length of the body. The real length if this is negative.
        qint64 announcedLength = -1;
        /// Keeps the connection open after the body.
        bool staysOpen = false;
    };

    /// A secure server has a certificate that no authority has signed.
    explicit UpdateServer(bool isSecure = false);

    [[nodiscard]] QUrl url(const QString &path) const;
    void setAnswer(const QString &path, const Answer &answer);
    void redirect(const QString &path, const QUrl &target);

    [[nodiscard]] const QByteArrayList &requests() const { return m_requests; }
    [[nodiscard]] int openConnections() const { return m_openConnections; }
    /// The bytes that the other side, or its system, has accepted.
    [[nodiscard]] qint64 sentBytes() const { return m_sentBytes; }

private:
    void accept();
    void read(QTcpSocket &socket);
    void send(QTcpSocket &socket, const Answer &answer);

    const bool m_isSecure;
    std::unique_ptr<QTcpServer> m_server;
    QHash<QString, Answer> m_answers;
    QByteArrayList m_requests;
    int m_openConnections = 0;
    qint64 m_sentBytes = 0;
};

/// The certificate of a secure server.
[[nodiscard]] QByteArray updateServerCertificate();

} // namespace tunedeck
