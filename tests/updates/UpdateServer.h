// SPDX-License-Identifier: MIT
#pragma once

#include <QByteArray>
#include <QByteArrayList>
#include <QHash>
#include <QObject>
#include <QSslServer>
#include <QUrl>

#include <chrono>

class QSslSocket;

namespace tunedeck {

/// A secure web server for tests, with an answer for each path. No authority has signed its certificate.
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
        /// How many bytes of further headers come before the body.
        qint64 furtherHeaders = 0;
        /// The time before each repetition of the body.
        std::chrono::milliseconds pause = {};
    };

    UpdateServer();

    [[nodiscard]] QUrl url(const QString &path) const;
    void setAnswer(const QString &path, const Answer &answer);
    void redirect(const QString &path, const QUrl &target);

    [[nodiscard]] const QByteArrayList &requests() const { return m_requests; }
    [[nodiscard]] int openConnections() const { return m_openConnections; }
    /// The bytes that the system has accepted, encrypted.
    [[nodiscard]] qint64 sentBytes() const { return m_sentBytes; }

private:
    void accept();
    void read(QSslSocket &socket);
    void send(QSslSocket &socket, const Answer &answer);
    void sendBody(QSslSocket &socket, const Answer &answer);

    QSslServer m_server;
    QHash<QString, Answer> m_answers;
    QByteArrayList m_requests;
    int m_openConnections = 0;
    qint64 m_sentBytes = 0;
};

/// The file with the certificate of the servers, as an authority of its own.
[[nodiscard]] QString updateServerCertificate();

} // namespace tunedeck
