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

/// A web server of the test's own, which has for each path the answer that it is told.
class UpdateServer : public QObject {
    Q_OBJECT

public:
    struct Answer {
        QByteArray body = {};
        QByteArray status = "200 OK";
        /// Whole lines with their ends.
        QByteArray headers = {};
        /// How often the body is sent.
        int repetitions = 1;
        /// What is announced of the body's length; else its length.
        qint64 announcedLength = -1;
        /// What is sent is all, but the connection stays.
        bool staysOpen = false;
    };

    /// With `isSecure`, under a certificate that nobody vouches for.
    explicit UpdateServer(bool isSecure = false);

    [[nodiscard]] QUrl url(const QString &path) const;
    void setAnswer(const QString &path, const Answer &answer);
    void redirect(const QString &path, const QUrl &target);

    [[nodiscard]] const QByteArrayList &requests() const { return m_requests; }
    [[nodiscard]] int openConnections() const { return m_openConnections; }
    /// That have been taken by the other side or its system.
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

/// The certificate of a secure one.
[[nodiscard]] QByteArray updateServerCertificate();

} // namespace tunedeck
