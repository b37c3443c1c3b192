// SPDX-License-Identifier: MIT
#include "music/mpris/report/TrackDetails.h"

#include "music/mpris/bus/BusValue.h"

#include <QCryptographicHash>
#include <QRegularExpression>
#include <QUrl>
#include <QtEndian>

#include <array>
#include <cmath>

namespace tunedeck {

namespace {

constexpr qsizetype maximumArtists = 32;
/// A longer "track" is a stream: Chromium sends the largest integer for one.
constexpr double maximumLength = 30.0 * 24 * 60 * 60;
constexpr double microsecondsPerSecond = 1e6;
/// VLC reports a length that is some milliseconds off at every read.
constexpr double lengthDrift = 0.2; // seconds
/// A stream's length grows by no more between two reports.
constexpr double largestGrowth = 10; // seconds

/// The keys of VLC, cmus and Celluloid for the song of a station, whose title stays the station's name.
constexpr std::array songKeys{
    QLatin1StringView("vlc:nowplaying"), QLatin1StringView("cmus:stream_title"), QLatin1StringView("icy-title")};

/// Rhythmbox and Lollypop write "Unknown", Sayonara "Unknown artist", if the file has no tag.
bool isPlaceholder(const QString &text)
{
    static const QRegularExpression placeholder(
        QStringLiteral("^[<(\\[]?unknown( (artist|album|title|track|genre))?[>)\\]]?$"),
        QRegularExpression::CaseInsensitiveOption);
    // The start need not prepare the expression for a text without the word.
    return text.contains(QLatin1StringView("unknown"), Qt::CaseInsensitive) && placeholder.match(text).hasMatch();
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

/// mpDris2 does not encode its addresses. A "%" in an address with a character that none has when it is encoded is just
/// that.
bool isEncoded(const QString &url, bool isFromWeb)
{
    static const QRegularExpression never(QStringLiteral(R"([^!-~]|["<>\\^`{|}]|%(?![0-9a-fA-F]{2}))"));
    static const QRegularExpression neverInFiles(QStringLiteral("[?#]|^/"));
    return !url.contains(never) && (isFromWeb || !url.contains(neverInFiles));
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
    const QString last = path.mid(path.lastIndexOf(u'/') + 1);
    // Decoding can bring back control characters.
    return isEncoded(url, isFromWeb) ? bus::text(QUrl::fromPercentEncoding(last.toUtf8())).value_or(QString()) : last;
}

/// Quod Libet, Lollypop and Chromium send the path NoTrack for nothing, mpv sends /noplaylist.
bool isIdOfATrack(const QString &trackId)
{
    static const QRegularExpression nothing(QStringLiteral("^$|^/$|/NoTrack$|^/noplaylist$|^/org/mpris/MediaPlayer2$"));
    return !trackId.contains(nothing);
}

QString songOf(const QVariantMap &metadata)
{
    for (const QLatin1StringView key : songKeys) {
        if (const QString song = textOf(metadata, key); !song.isEmpty()) {
            return song;
        }
    }
    return {};
}

/// The song takes the title's place, and the station the album's.
void moveStation(TrackDetails &track, const QString &song)
{
    if (!song.isEmpty() && song != track.title) {
        track.album = track.title.isEmpty() ? track.album : track.title;
        track.title = song;
    }
}

bool isSameLength(const std::optional<double> &one, const std::optional<double> &other)
{
    return one && other ? std::abs(*one - *other) < lengthDrift : one == other;
}

bool canGrowToEachOther(const std::optional<double> &one, const std::optional<double> &other)
{
    return one && other && std::abs(*one - *other) <= largestGrowth;
}

} // namespace

bool TrackDetails::isEmpty() const
{
    return isNameless() && distinctId.isEmpty() && !length;
}

bool TrackDetails::isNameless() const
{
    return url.isEmpty() && title.isEmpty() && artists.isEmpty() && album.isEmpty();
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
    return title.isEmpty() ? lastPartOf(url, isFromWeb()) : title;
}

QString TrackDetails::artist() const
{
    return artists.join(QStringLiteral(", "));
}

qint64 TrackDetails::persistentId() const
{
    QCryptographicHash hash(QCryptographicHash::Sha1);
    for (const QString &part : {url, name(), artist(), album}) {
        hash.addData(part.toUtf8());
        hash.addData(QByteArrayView("\0", 1));
    }
    if (isNameless() && !isEmpty()) {
        hash.addData(distinctId.toUtf8());
        hash.addData(QByteArray::number(std::llround(length.value_or(0))));
    }
    constexpr quint64 without63rdBit = 0x7fff'ffff'ffff'ffff;
    return static_cast<qint64>(qFromBigEndian<quint64>(hash.result().constData()) & without63rdBit);
}

bool TrackDetails::isSameTrack(const TrackDetails &other) const
{
    if (isNameless() && other.isNameless()) {
        // A track id alone is no identity, but as long as nothing else differs much, it is all there is.
        return distinctId == other.distinctId
            && (isSameLength(length, other.length)
                || (!distinctId.isEmpty() && canGrowToEachOther(length, other.length)));
    }
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
        moveStation(track, songOf(metadata));
    }
    if (track.isNameless() && isIdOfATrack(track.trackId)) {
        track.distinctId = track.trackId;
    }
    if (const std::optional<double> processId = bus::number(metadata.value(QStringLiteral("kde:pid")))) {
        track.browserProcessId = *processId > 0 && *processId < 1e9 ? std::optional(qint64(*processId)) : std::nullopt;
    }
    return track;
}

} // namespace tunedeck
