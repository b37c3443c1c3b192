// SPDX-License-Identifier: MIT
#pragma once

#include <QByteArray>
#include <QList>
#include <QLocalServer>
#include <QLocalSocket>
#include <QString>
#include <QTemporaryDir>

#include <functional>
#include <optional>

namespace tunedeck {

/// A compositor's socket. Each connection brings a question.
class ScriptedCompositor {
public:
    ScriptedCompositor()
    {
        m_server.listen(path());
        QObject::connect(&m_server, &QLocalServer::newConnection, &m_server, [this] { serve(); });
    }

    [[nodiscard]] QString path() const { return m_folder.filePath(QStringLiteral("socket")); }

    /// Gives the answer to a question. No value hangs.
    std::function<std::optional<QByteArray>(const QByteArray &question)> answer;
    bool closesAfterAnswer = true;
    QList<QByteArray> questions;
    int connectionsClosed = 0;

private:
    void serve()
    {
        QLocalSocket *socket = m_server.nextPendingConnection();
        QObject::connect(socket, &QLocalSocket::disconnected, &m_server, [this] { ++connectionsClosed; });
        QObject::connect(socket, &QLocalSocket::readyRead, socket, [this, socket] {
            questions.append(socket->readAll());
            if (const std::optional<QByteArray> told = answer(questions.constLast())) {
                socket->write(*told);
                if (closesAfterAnswer) {
                    socket->disconnectFromServer();
                }
            }
        });
    }

    QTemporaryDir m_folder;
    QLocalServer m_server;
};

} // namespace tunedeck
