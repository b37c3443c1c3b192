// SPDX-License-Identifier: MIT
#include "above/HyprlandRoad.h"

#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>
#include <QJsonValue>
#include <QRegularExpression>

#include <algorithm>
#include <utility>

namespace tunedeck {

namespace {
/// Hyprland ends an answer by closing the connection.
CompositorSocket::Reading judge(const QByteArray & /*bytes*/, bool isClosed)
{
    return isClosed ? CompositorSocket::Reading::Finished : CompositorSocket::Reading::Unfinished;
}

/// The address becomes a part of a command.
bool isAddress(const QString &text)
{
    static const QRegularExpression address(QStringLiteral("\\A0x[0-9a-f]{1,16}\\z"));
    return address.match(text).hasMatch();
}

std::optional<HyprlandRoad::Client> findWindow(const QJsonArray &clients, qint64 processId, const QString &title)
{
    for (const auto value : clients) {
        const QJsonObject client = value.toObject();
        const QString address = client.value(QLatin1String("address")).toString();
        if (client.value(QLatin1String("pid")).toInteger() == processId
            && client.value(QLatin1String("title")).toString() == title && isAddress(address)) {
            return HyprlandRoad::Client{.address = address.toLatin1(),
                .isFloating = client.value(QLatin1String("floating")).toBool(),
                .isPinned = client.value(QLatin1String("pinned")).toBool()};
        }
    }
    return std::nullopt;
}
} // namespace

HyprlandRoad::HyprlandRoad(QString path, qint64 processId, QString title, QObject *parent)
    : AboveRoad(parent)
    , m_path(std::move(path))
    , m_processId(processId)
    , m_title(std::move(title))
    , m_socket(judge)
{
    connect(&m_socket, &CompositorSocket::answered, this, &HyprlandRoad::handle);
    connect(&m_socket, &CompositorSocket::failed, this, [this] { Q_EMIT answered(AboveAnswer::Refused); });
}

void HyprlandRoad::ask(bool isAbove)
{
    m_isAbove = isAbove;
    send(Stage::LooksForWindow, "j/clients");
}

void HyprlandRoad::abandon()
{
    m_socket.close();
    m_commands.clear();
}

void HyprlandRoad::send(Stage stage, const QByteArray &message)
{
    m_stage = stage;
    m_socket.ask(m_path, message);
}

void HyprlandRoad::handle(const QByteArray &answer)
{
    if (m_stage == Stage::Changes && answer == "ok") {
        sendNextCommand();
        return;
    }
    const QJsonDocument clients = QJsonDocument::fromJson(answer);
    if (m_stage == Stage::Changes || !clients.isArray()) {
        m_commands.clear();
        Q_EMIT answered(AboveAnswer::Refused);
    } else {
        handleClients(findWindow(clients.array(), m_processId, m_title));
    }
}

void HyprlandRoad::handleClients(const std::optional<Client> &client)
{
    if (!client) {
        Q_EMIT answered(AboveAnswer::NoWindow);
    } else if (isAsWanted(*client)) {
        if (!m_isAbove) {
            m_floated.clear();
        }
        Q_EMIT answered(AboveAnswer::Done);
    } else if (m_stage == Stage::Checks) {
        Q_EMIT answered(AboveAnswer::Refused);
    } else {
        m_commands = commands(*client);
        sendNextCommand();
    }
}

QList<QByteArray> HyprlandRoad::commands(const Client &client)
{
    QList<QByteArray> missing;
    if (m_isAbove && !client.isFloating) {
        m_floated = client.address;
        missing.append("dispatch setfloating address:" + client.address);
    }
    if (client.isPinned != m_isAbove) {
        missing.append("dispatch pin address:" + client.address);
    }
    if (isToBeTiled(client)) {
        missing.append("dispatch settiled address:" + client.address);
    }
    return missing;
}

bool HyprlandRoad::isAsWanted(const Client &client) const
{
    return client.isPinned == m_isAbove && !isToBeTiled(client);
}

bool HyprlandRoad::isToBeTiled(const Client &client) const
{
    return !m_isAbove && client.isFloating && client.address == m_floated;
}

void HyprlandRoad::sendNextCommand()
{
    if (m_commands.isEmpty()) {
        send(Stage::Checks, "j/clients");
    } else {
        send(Stage::Changes, m_commands.takeFirst());
    }
}

} // namespace tunedeck
