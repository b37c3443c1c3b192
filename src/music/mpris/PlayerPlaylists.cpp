// SPDX-License-Identifier: MIT
#include "PlayerPlaylists.h"

#include "MprisNames.h"
#include "PlayerReport.h"
#include "PlaylistPages.h"

#include <QDBusMessage>
#include <QDBusObjectPath>
#include <QDBusPendingCallWatcher>
#include <QDeadlineTimer>
#include <QEventLoop> // waits on a worker thread

namespace tunedeck {

namespace {

constexpr Milliseconds deadline{1'000};
/// For the list as a whole, however many pages it has.
constexpr Milliseconds listDeadline{4'000};

/// The order in which the player shows its playlists, if it says that it knows it. Otherwise its first: some answer an
/// order that they have not listed with an error.
QString playersOwnOrder(const QVariantMap &properties)
{
    const QString asArrangedByTheUser = QStringLiteral("UserDefined");
    const QStringList orders = bus::texts(properties.value(QStringLiteral("Orderings")), bus::maximumElements);
    return orders.isEmpty() || orders.contains(asArrangedByTheUser) ? asArrangedByTheUser : orders.constFirst();
}

} // namespace

PlayerPlaylists::PlayerPlaylists(const QDBusConnection &bus, const QString &owner)
    : m_bus(bus)
    , m_owner(owner)
{
}

std::optional<PlaylistDetails> PlayerPlaylists::readActive() const
{
    const std::optional<QVariantMap> all = properties(mpris::playlistsInterface);
    return all ? decodeActivePlaylist(all->value(QStringLiteral("ActivePlaylist"))) : std::nullopt;
}

std::optional<QVariantList> PlayerPlaylists::readIds()
{
    const std::optional<QList<PlaylistDetails>> playlists = readAll();
    if (!playlists) {
        return std::nullopt;
    }
    QVariantList ids;
    QVariantList names;
    QHash<qint64, QString> paths;
    for (const PlaylistDetails &playlist : *playlists) {
        ids.append(playlist.id);
        names.append(playlist.name);
        paths.insert(playlist.id, playlist.path);
    }
    const std::lock_guard lock(m_mutex);
    m_names = names;
    m_paths = paths;
    return ids;
}

std::optional<QVariantList> PlayerPlaylists::names() const
{
    const std::lock_guard lock(m_mutex);
    return m_names;
}

bool PlayerPlaylists::play(qint64 id)
{
    const std::optional<QString> path = pathOf(id);
    if (!path || !pauseWhatPlays()) {
        return false;
    }
    const QVariant argument = QVariant::fromValue(QDBusObjectPath(*path));
    return ask(mpris::playlistsInterface, QStringLiteral("ActivatePlaylist"), {argument}, deadline).has_value();
}

void PlayerPlaylists::stopWaiting()
{
    m_stop.request_stop();
}

std::optional<QList<PlaylistDetails>> PlayerPlaylists::readAll() const
{
    const QDeadlineTimer end(listDeadline);
    const std::optional<QVariantMap> all = properties(mpris::playlistsInterface);
    if (!all) {
        return std::nullopt;
    }
    const QString order = playersOwnOrder(*all);
    PlaylistPages pages;
    while (!pages.isComplete()) {
        const std::optional<QVariantList> reply = ask(mpris::playlistsInterface, QStringLiteral("GetPlaylists"),
            {pages.nextIndex(), uint(PlaylistPages::pageSize), order, false}, Milliseconds(end.remainingTime()));
        if (!reply) {
            return std::nullopt;
        }
        pages.add(reply->value(0));
    }
    return pages.playlists();
}

std::optional<QString> PlayerPlaylists::pathOf(qint64 id) const
{
    const std::lock_guard lock(m_mutex);
    const auto found = m_paths.constFind(id);
    return found == m_paths.cend() ? std::nullopt : std::optional(*found);
}

/// One player toggles between playing and pausing when it is told to play a playlist, so it is paused before it is
/// told. False where that cannot be had.
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
    return report.canControl.value_or(true) && ask(mpris::playerInterface, command, {}, deadline);
}

std::optional<QVariantMap> PlayerPlaylists::properties(const QString &interface) const
{
    const std::optional<QVariantList> reply =
        ask(mpris::propertiesInterface, QStringLiteral("GetAll"), {interface}, deadline);
    if (!reply) {
        return std::nullopt;
    }
    // One player answers with an empty map for an interface it does not have.
    const QVariantMap properties = bus::plainMap(reply->value(0));
    return properties.isEmpty() ? std::nullopt : std::optional(properties);
}

std::optional<QVariantList> PlayerPlaylists::ask(
    const QString &interface, const QString &method, const QVariantList &arguments, Milliseconds patience) const
{
    if (patience <= Milliseconds(0) || m_stop.stop_requested()) {
        return std::nullopt;
    }
    QDBusMessage message = QDBusMessage::createMethodCall(m_owner, mpris::objectPath, interface, method);
    message.setAutoStartService(false);
    message.setArguments(arguments);

    // An event loop, since a call that waits by itself could not be interrupted by stopWaiting().
    QEventLoop loop; // waits on a worker thread
    const QDBusPendingCallWatcher answer(m_bus.asyncCall(message, int(patience.count())));
    QObject::connect(&answer, &QDBusPendingCallWatcher::finished, &loop, &QEventLoop::quit); // waits on a worker thread
    const std::stop_callback letGo(m_stop.get_token(), [&loop] {
        QMetaObject::invokeMethod(&loop, &QEventLoop::quit, Qt::QueuedConnection); // waits on a worker thread
    });
    loop.exec();
    const QDBusMessage reply = answer.reply();
    return reply.type() == QDBusMessage::ReplyMessage ? std::optional(reply.arguments()) : std::nullopt;
}

} // namespace tunedeck
