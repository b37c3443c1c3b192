// SPDX-License-Identifier: MIT
#include "music/mpris/PlaylistDetails.h"

#include "music/mpris/bus/BusValue.h"

#include <QCryptographicHash>
#include <QRegularExpression>
#include <QVariantList>
#include <QtEndian>

namespace tunedeck {

namespace {

/// None for an invalid path, which QtDBus refuses to send, and for "/", which means no playlist.
std::optional<QString> pathFrom(const QVariant &value)
{
    static const QRegularExpression path(QStringLiteral("\\A(/[A-Za-z0-9_]+)+\\z"));
    const QString text = value.typeId() == QMetaType::QString ? value.toString() : QString();
    return text.size() <= bus::maximumTextLength && path.match(text).hasMatch() ? std::optional(text) : std::nullopt;
}

} // namespace

qint64 playlistId(const QString &path)
{
    const QByteArray hash = QCryptographicHash::hash(path.toUtf8(), QCryptographicHash::Sha1);
    return static_cast<qint64>(qFromBigEndian<quint64>(hash.constData()) >> 1);
}

std::optional<PlaylistDetails> decodePlaylist(const QVariant &value)
{
    const QVariantList fields = value.toList();
    const std::optional<QString> path = pathFrom(fields.value(0));
    if (!path) {
        return std::nullopt;
    }
    return PlaylistDetails{
        .id = playlistId(*path), .path = *path, .name = bus::text(fields.value(1)).value_or(QString())};
}

std::optional<PlaylistDetails> decodeActivePlaylist(const QVariant &value)
{
    const QVariantList fields = value.toList();
    const bool isThere = bus::boolean(fields.value(0)).value_or(false);
    return isThere ? decodePlaylist(fields.value(1)) : std::nullopt;
}

} // namespace tunedeck
