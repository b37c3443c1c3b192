// SPDX-License-Identifier: MIT
#include "PlaylistFiles.h"

#include "BusValue.h"

#include <QCollator>
#include <QDir>
#include <QDirIterator>
#include <QFileInfo>
#include <QHash>
#include <QStandardPaths>

#include <algorithm>
#include <chrono>
#include <future>
#include <memory>
#include <thread>

namespace tunedeck {

namespace {

bool isPlaylist(const QFileInfo &file)
{
    static const QStringList suffixes{
        QStringLiteral("m3u"), QStringLiteral("m3u8"), QStringLiteral("pls"), QStringLiteral("xspf")};
    return suffixes.contains(file.suffix(), Qt::CaseInsensitive);
}

void sortByName(QList<PlaylistDetails> &playlists)
{
    QCollator collator;
    collator.setNumericMode(true);
    collator.setCaseSensitivity(Qt::CaseInsensitive);
    std::ranges::sort(playlists, [&collator](const PlaylistDetails &left, const PlaylistDetails &right) {
        const int order = collator.compare(left.name, right.name);
        return order == 0 ? left.path < right.path : order < 0;
    });
}

void tellSameNamesApart(QList<PlaylistDetails> &playlists, const QDir &folder)
{
    QHash<QString, int> counts;
    for (const PlaylistDetails &playlist : std::as_const(playlists)) {
        ++counts[playlist.name];
    }
    for (PlaylistDetails &playlist : playlists) {
        if (counts.value(playlist.name) > 1) {
            playlist.name = bus::text(folder.relativeFilePath(playlist.path)).value_or(playlist.name);
        }
    }
}

} // namespace

QString musicFolder()
{
    const QString folder = QStandardPaths::writableLocation(QStandardPaths::MusicLocation);
    return QDir(folder) == QDir::home() ? QString() : folder;
}

QList<PlaylistDetails> findPlaylistFiles(
    const QString &folder, const QDeadlineTimer &deadline, const std::stop_token &stop)
{
    QList<PlaylistDetails> playlists;
    if (folder.isEmpty()) {
        return playlists;
    }
    QDirIterator files(folder, QDir::Files | QDir::Readable, QDirIterator::Subdirectories);
    while (playlists.size() < maximumPlaylistFiles && !deadline.hasExpired() && !stop.stop_requested()
        && files.hasNext()) {
        const QString path = files.next();
        const QFileInfo file = files.fileInfo();
        const std::optional<QString> name = bus::text(file.completeBaseName());
        // Some names cannot be said in characters, and what cannot be named cannot be opened.
        if (isPlaylist(file) && name && file.exists()) {
            playlists.append(PlaylistDetails{.id = playlistId(path), .path = path, .name = *name});
        }
    }
    sortByName(playlists);
    tellSameNamesApart(playlists, QDir(folder));
    return playlists;
}

std::optional<QList<PlaylistDetails>> playlistFilesOfMusicFolder(
    const QDeadlineTimer &deadline, const std::stop_token &stop)
{
    using namespace std::chrono_literals;
    // What a disk that answers needs to be done once the deadline has passed.
    constexpr auto grace = 200ms;
    constexpr auto patience = 20ms;

    auto found = std::make_shared<std::promise<QList<PlaylistDetails>>>();
    std::future<QList<PlaylistDetails>> answer = found->get_future();
    std::thread([found, deadline, stop] {
        found->set_value(findPlaylistFiles(musicFolder(), deadline, stop));
    }).detach();
    const QDeadlineTimer end = deadline + grace.count();
    while (answer.wait_for(patience) != std::future_status::ready) {
        if (end.hasExpired() || stop.stop_requested()) {
            return std::nullopt;
        }
    }
    return answer.get();
}

} // namespace tunedeck
