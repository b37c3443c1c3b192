// SPDX-License-Identifier: MIT
#include "music/mpris/PlayerPlaylists.h"

#include "music/mpris/PlayingPlaylist.h"
#include "music/mpris/PlaylistFiles.h"
#include "music/mpris/PlaylistPages.h"
#include "music/mpris/bus/BusCall.h"
#include "music/mpris/bus/BusValue.h"
#include "music/mpris/bus/MprisNames.h"
#include "music/mpris/report/PlayerReport.h"

#include <QDBusError>
#include <QDBusObjectPath>
#include <QDeadlineTimer>
#include <QEventLoop> // waits on a worker thread
#include <QSet>
#include <QTimer>
#include <QUrl>

#include <algorithm>

namespace tunedeck {

namespace {

/// Time for the whole list, however many pages it has.
constexpr Milliseconds listDeadline{4'000};
/// Time that ActivePlaylist gets to become the playlist that was activated.
constexpr Milliseconds following{500};

/// The order in which the player shows its playlists, if it lists that order, else the first that it lists: Rhythmbox
/// lists "Alphabetical" alone, Strawberry "User".
QString playersOwnOrder(const QVariantMap &properties)
{
    const QString asArrangedByTheUser = QStringLiteral("UserDefined");
    const QStringList orders = bus::texts(properties.value(QStringLiteral("Orderings")), bus::maximumElements);
    return orders.isEmpty() || orders.contains(asArrangedByTheUser) ? asArrangedByTheUser : orders.constFirst();
}

/// Whether a player with these root properties opens playlist files. It may list a single type of them.
bool opensPlaylistFiles(const QVariantMap &properties)
{
    static const QSet<QString> playlistTypes{QStringLiteral("application/mpegurl"),
        QStringLiteral("application/vnd.apple.mpegurl"), QStringLiteral("application/x-mpegurl"),
        QStringLiteral("application/xspf+xml"), QStringLiteral("audio/m3u"), QStringLiteral("audio/mpegurl"),
        QStringLiteral("audio/scpls"), QStringLiteral("audio/x-m3u"), QStringLiteral("audio/x-mpegurl"),
        QStringLiteral("audio/x-scpls")};
    const auto said = [&properties](
                          const QString &key) { return bus::texts(properties.value(key), bus::maximumElements); };
    const QStringList types = said(QStringLiteral("SupportedMimeTypes"));
    return said(QStringLiteral("SupportedUriSchemes")).contains(QStringLiteral("file"), Qt::CaseInsensitive)
        && std::ranges::any_of(types, [](const QString &type) { return playlistTypes.contains(type.toLower()); });
}

/// Whether an error says only that the player did not answer.
bool isSilence(const bus::Answer &answer)
{
    return answer.isUnanswered() || answer.error == QDBusError::Disconnected
        || answer.error == QDBusError::ServiceUnknown;
}

bool isDone(const std::optional<bus::Answer> &answer)
{
    return answer && !answer->isError();
}

} // namespace

PlayerPlaylists::PlayerPlaylists(
    const QDBusConnection &bus, const QString &destination, std::shared_ptr<PlayingPlaylist> playing)
    : m_bus(bus)
    , m_playing(std::move(playing))
    , m_destination(destination)
{
}

void PlayerPlaylists::setDestination(const QString &destination)
{
    const std::lock_guard lock(m_mutex);
    m_destination = destination;
}

std::optional<PlaylistDetails> PlayerPlaylists::readActive() const
{
    const std::optional<PlaylistDetails> active = readActiveProperty(bus::deadline);
    if (m_playing->isSuspect(active)) {
        const std::optional<PlaybackStatus> status = readStatus();
        if (status == PlaybackStatus::Stopped) {
            m_playing->noteActiveIsOnView();
        } else if (status) {
            // A player that has just come is taken for stopped until its track is believed.
            return active;
        }
    }
    return m_playing->judge(active);
}

std::optional<QVariantList> PlayerPlaylists::readIds()
{
    const std::optional<Offer> offer = readOffer();
    if (!offer) {
        return std::nullopt;
    }
    QVariantList ids;
    QVariantList names;
    QHash<qint64, PlaylistDetails> playlists;
    for (const PlaylistDetails &playlist : offer->playlists) {
        ids.append(playlist.id);
        names.append(playlist.name);
        playlists.insert(playlist.id, playlist);
    }
    const std::lock_guard lock(m_mutex);
    m_source = offer->source;
    m_hasMore = offer->hasMore;
    m_names = names;
    m_playlists = playlists;
    return ids;
}

std::optional<QVariantList> PlayerPlaylists::names() const
{
    const std::lock_guard lock(m_mutex);
    return m_names;
}

PlaylistSource PlayerPlaylists::source() const
{
    const std::lock_guard lock(m_mutex);
    return m_source;
}

bool PlayerPlaylists::hasMore() const
{
    const std::lock_guard lock(m_mutex);
    return m_hasMore;
}

bool PlayerPlaylists::play(qint64 id)
{
    const std::optional<Place> place = placeOf(id);
    if (!place) {
        return false;
    }
    if (place->source == PlaylistSource::files) {
        return open(place->playlist.path);
    }
    if (!pauseWhatPlays() || !activate(place->playlist)) {
        return false;
    }
    learnWhetherActiveFollows(place->playlist);
    return true;
}

void PlayerPlaylists::stopWaiting()
{
    m_stop.request_stop();
}

std::optional<PlayerPlaylists::Offer> PlayerPlaylists::readOffer() const
{
    const QDeadlineTimer end(listDeadline);
    const std::optional<QVariantMap> own = properties(mpris::playlistsInterface);
    if (!own) {
        return std::nullopt;
    }
    if (!own->isEmpty()) {
        std::optional<QList<PlaylistDetails>> playlists = readPages(*own, end);
        return playlists ? std::optional(Offer{PlaylistSource::music, *playlists}) : std::nullopt;
    }
    const std::optional<QVariantMap> root = properties(mpris::rootInterface);
    if (!root) {
        return std::nullopt;
    }
    if (!opensPlaylistFiles(*root)) {
        return Offer{PlaylistSource::none};
    }
    const std::optional<PlaylistFiles> files = findPlaylistFiles({}, end, m_stop.get_token());
    return files ? std::optional(Offer{PlaylistSource::files, files->playlists, !files->isWhole}) : std::nullopt;
}

std::optional<QList<PlaylistDetails>> PlayerPlaylists::readPages(
    const QVariantMap &properties, const QDeadlineTimer &deadline) const
{
    const QString order = playersOwnOrder(properties);
    PlaylistPages pages(bus::number(properties.value(QStringLiteral("PlaylistCount"))));
    while (!pages.isComplete()) {
        const std::optional<bus::Answer> answer = ask(mpris::playlistsInterface, QStringLiteral("GetPlaylists"),
            {pages.nextIndex(), uint(PlaylistPages::pageSize), order, false}, Milliseconds(deadline.remainingTime()));
        if (!answer) {
            return std::nullopt;
        }
        // A player may answer a request beyond the last playlist with an error.
        if (answer->isError()) {
            return pages.reachesCount() ? std::optional(pages.playlists()) : std::nullopt;
        }
        pages.add(answer->argument(0));
    }
    return pages.playlists();
}

std::optional<PlayerPlaylists::Place> PlayerPlaylists::placeOf(qint64 id) const
{
    const std::lock_guard lock(m_mutex);
    const auto found = m_playlists.constFind(id);
    return found == m_playlists.cend() ? std::nullopt : std::optional(Place{m_source, *found});
}

/// Pauses the player. Rhythmbox toggles between playing and pausing when it is told to play a playlist. False if the
/// player still plays.
bool PlayerPlaylists::pauseWhatPlays() const
{
    const std::optional<QVariantMap> all = properties(mpris::playerInterface);
    if (!all) {
        return false;
    }
    const PlayerReport report = decodePlayerProperties(*all);
    if (report.status != PlaybackStatus::Playing) {
        return report.canControl.value_or(true);
    }
    const QString command = report.canPause.value_or(true) ? QStringLiteral("Pause") : QStringLiteral("Stop");
    return report.canControl.value_or(true) && isDone(ask(mpris::playerInterface, command, {}, bus::deadline));
}

bool PlayerPlaylists::activate(const PlaylistDetails &playlist) const
{
    const QVariant path = QVariant::fromValue(QDBusObjectPath(playlist.path));
    if (!isDone(ask(mpris::playlistsInterface, QStringLiteral("ActivatePlaylist"), {path}, bus::deadline))) {
        return false;
    }
    m_playing->noteActivated(playlist);
    return true;
}

void PlayerPlaylists::learnWhetherActiveFollows(const PlaylistDetails &activated) const
{
    if (m_playing->isKnown()) {
        return;
    }
    std::optional<PlaylistDetails> active = readActiveProperty(following);
    if (!active || active->id != activated.id) {
        wait(following);
        active = readActiveProperty(following);
    }
    if (active && active->id == activated.id) {
        m_playing->noteActiveFollows();
    } else if (active) {
        m_playing->noteActiveIsOnView();
    }
}

std::optional<PlaylistDetails> PlayerPlaylists::readActiveProperty(Milliseconds patience) const
{
    const std::optional<QVariantMap> all = properties(mpris::playlistsInterface, patience);
    return all ? decodeActivePlaylist(all->value(QStringLiteral("ActivePlaylist"))) : std::nullopt;
}

std::optional<PlaybackStatus> PlayerPlaylists::readStatus() const
{
    const std::optional<QVariantMap> all = properties(mpris::playerInterface);
    return all ? decodePlayerProperties(*all).status : std::nullopt;
}

bool PlayerPlaylists::open(const QString &file) const
{
    const QString address = QString::fromLatin1(QUrl::fromLocalFile(file).toEncoded());
    return isDone(ask(mpris::playerInterface, QStringLiteral("OpenUri"), {address}, bus::deadline));
}

std::optional<QVariantMap> PlayerPlaylists::properties(const QString &interface, Milliseconds patience) const
{
    const std::optional<bus::Answer> answer =
        ask(mpris::propertiesInterface, QStringLiteral("GetAll"), {interface}, patience);
    if (!answer) {
        return std::nullopt;
    }
    // For an interface that it does not have, Lollypop answers with an empty map, and other players with an error.
    return bus::plainMap(answer->argument(0));
}

QString PlayerPlaylists::destination() const
{
    const std::lock_guard lock(m_mutex);
    return m_destination;
}

std::optional<bus::Answer> PlayerPlaylists::ask(
    const QString &interface, const QString &method, const QVariantList &arguments, Milliseconds patience) const
{
    if (patience <= Milliseconds(0) || m_stop.stop_requested()) {
        return std::nullopt;
    }
    const QDBusMessage message = bus::playerCall(destination(), interface, method, arguments);

    // An event loop, since a call that waits by itself could not be interrupted by stopWaiting().
    QEventLoop loop; // waits on a worker thread
    std::optional<bus::Answer> answer;
    const auto handleAnswer = [&loop, &answer](const bus::Answer &given) {
        answer = given;
        loop.quit(); // waits on a worker thread
    };
    bus::send(m_bus, message, &loop, handleAnswer, patience);
    const std::stop_callback letGo(m_stop.get_token(), [&loop] {
        QMetaObject::invokeMethod(&loop, &QEventLoop::quit, Qt::QueuedConnection); // waits on a worker thread
    });
    loop.exec();
    return answer && isSilence(*answer) ? std::nullopt : answer;
}

void PlayerPlaylists::wait(Milliseconds time) const
{
    if (m_stop.stop_requested()) {
        return;
    }
    QEventLoop loop; // waits on a worker thread
    QTimer::singleShot(time, &loop, &QEventLoop::quit); // waits on a worker thread
    const std::stop_callback letGo(m_stop.get_token(), [&loop] {
        QMetaObject::invokeMethod(&loop, &QEventLoop::quit, Qt::QueuedConnection); // waits on a worker thread
    });
    loop.exec();
}

} // namespace tunedeck
