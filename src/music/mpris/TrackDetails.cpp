// SPDX-License-Identifier: MIT
#include "music/mpris/TrackDetails.h"

#include "music/mpris/bus/BusValue.h"

#include <QCryptographicHash>
#include <QRegularExpression>
#include <QUrl>
#include <QtEndian>

#include <array>

namespace tunedeck {

namespace {

constexpr qsizetype maximumArtists = 32;
/// A longer "track" is a stream: Chromium sends the largest integer for one.
constexpr double maximumLength = 30.0 * 24 * 60 * 60;
constexpr double microsecondsPerSecond = 1e6;

/// Rhythmbox and Lollypop write "Unknown", Sayonara "Unknown artist", if the file has no tag.
bool isPlaceholder(const QString &text)
{
    static const QRegularExpression placeholder(
        QStringLiteral("^[<(\\[]?unknown( (artist|album|title|track|genre))?[>)\\]]?$"),
        QRegularExpression::CaseInsensitiveOption);
    return placeholder.match(text).hasMatch();
}

QString textOf(const QVariantMap &metadata, const QString &key)
{
    return bus::text(metadata.value(key)).value_or(QString());
}

QString tagOf(const QVariantMap &metadata, const QString &key)
{
    const QString text = textOf(metadata, key);
    return isPlaceholder(text) ? QString() : text;
}

QStringList artistsOf(const QVariantMap &metadata)
{
    QStringList artists = bus::texts(metadata.value(QStringLiteral("xesam:artist")), maximumArtists);
    artists.removeIf(isPlaceholder);
    return artists;
}

std::optional<double> lengthOf(const QVariantMap &metadata)
{
    const std::optional<double> microseconds = bus::number(metadata.value(QStringLiteral("mpris:length")));
    if (!microseconds) {
        return std::nullopt;
    }
    const double seconds = *microseconds / microsecondsPerSecond;
    return seconds > 0 && seconds <= maximumLength ? std::optional(seconds) : std::nullopt;
}

QString schemeOf(const QString &url)
{
    static const QRegularExpression scheme(QStringLiteral("^([a-zA-Z][a-zA-Z0-9+.-]*):"));
    return scheme.match(url).captured(1).toLower();
}

/// mpDris2 does not encode its addresses, so a "%" may be just that.
QString percentDecoded(const QString &text)
{
    static const QRegularExpression strayPercent(QStringLiteral("%(?![0-9a-fA-F]{2})"));
    return text.contains(strayPercent) ? text : QUrl::fromPercentEncoding(text.toUtf8());
}

QString lastPartOf(const QString &url, bool isFromWeb)
{
    static const QRegularExpression queryAndFragment(QStringLiteral("[?#].*$"));
    QString path = url;
    if (isFromWeb) {
        path.remove(queryAndFragment);
    }
    while (path.endsWith(u'/')) {
        path.chop(1);
    }
    // Decoding can bring back control characters.
    return bus::text(percentDecoded(path.mid(path.lastIndexOf(u'/') + 1))).value_or(QString());
}

} // namespace

bool TrackDetails::isEmpty() const
{
    return url.isEmpty() && title.isEmpty() && streamTitle.isEmpty();
}

bool TrackDetails::isComplete() const
{
    return !title.isEmpty() && !(artists.isEmpty() && album.isEmpty()) && length;
}

bool TrackDetails::isLocalFile() const
{
    return url.startsWith(u'/') || schemeOf(url) == u"file";
}

bool TrackDetails::isFromWeb() const
{
    static constexpr std::array schemes{u"http", u"https", u"ftp", u"ftps", u"icy", u"icyx", u"mms", u"mmsh", u"mmst",
        u"rtmp", u"rtmps", u"rtp", u"rtsp", u"rtsps", u"udp"};
    const QString scheme = schemeOf(url);
    return std::ranges::any_of(schemes, [&](const char16_t *web) { return scheme == QStringView(web); });
}

bool TrackDetails::isLiveStream() const
{
    return !isLocalFile() && (!length || lengthGrows);
}

QString TrackDetails::name() const
{
    if (!streamTitle.isEmpty()) {
        return streamTitle;
    }
    return title.isEmpty() ? lastPartOf(url, isFromWeb()) : title;
}

QString TrackDetails::artist() const
{
    // VLC and Celluloid keep the station as the title, so it takes the artist's place.
    if (artists.isEmpty() && !streamTitle.isEmpty() && streamTitle != title) {
        return title;
    }
    return artists.join(QStringLiteral(", "));
}

qint64 TrackDetails::persistentId() const
{
    QCryptographicHash hash(QCryptographicHash::Sha1);
    for (const QString &part : {url, name(), artist(), album}) {
        hash.addData(part.toUtf8());
        hash.addData(QByteArrayView("\0", 1));
    }
    constexpr quint64 without63rdBit = 0x7fff'ffff'ffff'ffff;
    return static_cast<qint64>(qFromBigEndian<quint64>(hash.result().constData()) & without63rdBit);
}

bool TrackDetails::isSameTrack(const TrackDetails &other) const
{
    return url == other.url && name() == other.name() && artist() == other.artist() && album == other.album;
}

TrackDetails decodeMetadata(const QVariantMap &metadata)
{
    TrackDetails track;
    track.trackId = textOf(metadata, QStringLiteral("mpris:trackid"));
    track.url = textOf(metadata, QStringLiteral("xesam:url"));
    track.title = tagOf(metadata, QStringLiteral("xesam:title"));
    track.artists = artistsOf(metadata);
    track.album = tagOf(metadata, QStringLiteral("xesam:album"));
    track.genre = tagOf(metadata, QStringLiteral("xesam:genre"));
    track.length = lengthOf(metadata);
    if (!track.isLocalFile()) {
        // The own keys of VLC and Celluloid, whose title stays the station's name.
        track.streamTitle = textOf(metadata, QStringLiteral("vlc:nowplaying"));
        if (track.streamTitle.isEmpty()) {
            track.streamTitle = textOf(metadata, QStringLiteral("icy-title"));
        }
    }
    if (const std::optional<double> processId = bus::number(metadata.value(QStringLiteral("kde:pid")))) {
        track.browserProcessId = *processId > 0 && *processId < 1e9 ? std::optional(qint64(*processId)) : std::nullopt;
    }
    return track;
}

} // namespace tunedeck
