// SPDX-License-Identifier: MIT
#include "above/SwayRoad.h"

#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>
#include <QList>
#include <QtEndian>

#include <algorithm>
#include <utility>

namespace tunedeck {

namespace {
// A message is a mark, the length and the kind of its text as numbers of 32 bits in the machine's order, and the text.
constexpr QByteArrayView mark("i3-ipc");
constexpr qsizetype headSize = 14;
constexpr quint32 commandKind = 0;
constexpr quint32 treeKind = 4;

void appendNumber(QByteArray &bytes, quint32 number)
{
    bytes.append(reinterpret_cast<const char *>(&number), sizeof(number));
}

QByteArray message(quint32 kind, const QByteArray &text)
{
    QByteArray bytes = mark.toByteArray();
    appendNumber(bytes, quint32(text.size()));
    appendNumber(bytes, kind);
    return bytes + text;
}

qsizetype textSize(const QByteArray &bytes)
{
    return qsizetype(qFromUnaligned<quint32>(bytes.constData() + mark.size()));
}

CompositorSocket::Reading judge(const QByteArray &bytes, bool /*isClosed*/)
{
    using enum CompositorSocket::Reading;
    if (!bytes.startsWith(mark.first(std::min(mark.size(), bytes.size())))) {
        return Invalid;
    }
    if (bytes.size() < headSize) {
        return Unfinished;
    }
    if (textSize(bytes) > CompositorSocket::mostBytes - headSize) {
        return Invalid;
    }
    return bytes.size() < headSize + textSize(bytes) ? Unfinished : Finished;
}

QJsonDocument document(const QByteArray &answer)
{
    return QJsonDocument::fromJson(answer.mid(headSize, textSize(answer)));
}

/// Whether each part of a command was carried out.
bool isSuccess(const QJsonDocument &answer)
{
    const QJsonArray parts = answer.array();
    return !parts.isEmpty() && std::all_of(parts.begin(), parts.end(), [](const QJsonValue &part) {
        return part.toObject().value(QLatin1String("success")).toBool();
    });
}

std::optional<SwayRoad::Node> findWindow(const QJsonObject &tree, qint64 processId, const QString &title)
{
    QList<QJsonObject> pending{tree};
    while (!pending.isEmpty()) {
        const QJsonObject node = pending.takeLast();
        if (node.value(QLatin1String("pid")).toInteger() == processId
            && node.value(QLatin1String("name")).toString() == title) {
            return SwayRoad::Node{.number = node.value(QLatin1String("id")).toInteger(),
                .isFloating = node.value(QLatin1String("type")).toString() == QLatin1String("floating_con"),
                .isSticky = node.value(QLatin1String("sticky")).toBool()};
        }
        for (const QLatin1String key : {QLatin1String("nodes"), QLatin1String("floating_nodes")}) {
            const QJsonArray children = node.value(key).toArray();
            for (const auto child : children) {
                pending.append(child.toObject());
            }
        }
    }
    return std::nullopt;
}
} // namespace

SwayRoad::SwayRoad(QString path, qint64 processId, QString title, QObject *parent)
    : AboveRoad(parent)
    , m_path(std::move(path))
    , m_processId(processId)
    , m_title(std::move(title))
    , m_socket(judge)
{
    connect(&m_socket, &CompositorSocket::answered, this, &SwayRoad::handle);
    connect(&m_socket, &CompositorSocket::failed, this, [this] { Q_EMIT answered(AboveAnswer::Refused); });
}

void SwayRoad::ask(bool isAbove)
{
    m_isAbove = isAbove;
    send(Stage::LooksForWindow, message(treeKind, {}));
}

void SwayRoad::abandon()
{
    m_socket.close();
}

void SwayRoad::send(Stage stage, const QByteArray &message)
{
    m_stage = stage;
    m_socket.ask(m_path, message);
}

void SwayRoad::handle(const QByteArray &answer)
{
    const QJsonDocument told = document(answer);
    if (m_stage != Stage::Changes) {
        handleTree(findWindow(told.object(), m_processId, m_title));
    } else if (isSuccess(told)) {
        send(Stage::Checks, message(treeKind, {}));
    } else {
        Q_EMIT answered(AboveAnswer::Refused);
    }
}

void SwayRoad::handleTree(const std::optional<Node> &node)
{
    if (!node) {
        Q_EMIT answered(AboveAnswer::NoWindow);
    } else if (isAsWanted(*node)) {
        if (!m_isAbove) {
            m_before.reset();
        }
        Q_EMIT answered(AboveAnswer::Done);
    } else if (m_stage == Stage::Checks) {
        Q_EMIT answered(AboveAnswer::Refused);
    } else {
        send(Stage::Changes, message(commandKind, command(*node)));
    }
}

bool SwayRoad::isAsWanted(const Node &node) const
{
    return m_isAbove ? node.isFloating && node.isSticky : !node.isSticky && !isToBeTiled(node);
}

bool SwayRoad::isToBeTiled(const Node &node) const
{
    return !m_isAbove && node.isFloating && m_before && m_before->number == node.number && !m_before->isFloating;
}

QByteArray SwayRoad::command(const Node &node)
{
    const QByteArray window = "[con_id=" + QByteArray::number(node.number) + "] ";
    if (m_isAbove) {
        if (!m_before || m_before->number != node.number) {
            m_before = node;
        }
        return window + "floating enable, sticky enable";
    }
    return window + (isToBeTiled(node) ? "sticky disable, floating disable" : "sticky disable");
}

} // namespace tunedeck
