// SPDX-License-Identifier: MIT
#include "music/mpris/PlaylistFiles.h"

#include "music/mpris/bus/BusValue.h"

#include <QCollator>
#include <QDir>
#include <QDirIterator>
#include <QFileInfo>
#include <QHash>
#include <QStandardPaths>

#include <algorithm>
#include <array>
#include <chrono>
#include <future>
#include <memory>
#include <semaphore>
#include <thread>

namespace tunedeck {

namespace {

/// Limit for a disk with more folders than a user can have made.
constexpr qsizetype maximumFoldersToVisit = 100'000;

/// Lets one search run at a time: threads that wait for a disk must not pile up. It is never destroyed, as a search may
/// outlast the program.
std::binary_semaphore &search()
{
    static std::binary_semaphore search{1};
    return search;
}

bool isPlaylist(const QFileInfo &file)
{
    // Not a QStringList, which is destroyed at the end of the program: a search may outlast it.
    constexpr std::array suffixes{
        QLatin1String("m3u"), QLatin1String("m3u8"), QLatin1String("pls"), QLatin1String("xspf")};
    return std::ranges::any_of(suffixes,
        [suffix = file.suffix()](QLatin1String known) { return suffix.compare(known, Qt::CaseInsensitive) == 0; });
}

/// None for a file that is no playlist, or cannot be read. The disk is asked about playlists only: most files are
/// songs, and in the network each question takes time.
std::optional<PlaylistDetails> playlistIn(const QFileInfo &file)
{
    const QString path = file.filePath();
    // Some file names cannot be decoded; such files cannot be opened.
    if (!isPlaylist(file) || !file.isFile() || !QFileInfo(path).isReadable()) {
        return std::nullopt;
    }
    const std::optional<QString> name = bus::text(file.completeBaseName());
    return name ? std::optional(PlaylistDetails{.id = playlistId(path), .path = path, .name = *name}) : std::nullopt;
}

bool isToBeVisited(const QFileInfo &folder)
{
    return !folder.isSymLink() && folder.isDir();
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
    const auto isToGoOn = [&] {
        return playlists.size() < maximumPlaylistFiles && !deadline.hasExpired() && !stop.stop_requested();
    };
    // Not a recursive iterator: it keeps every folder open on the way down, however deep.
    QStringList folders{folder};
    while (!folders.isEmpty() && isToGoOn()) {
        QDirIterator entries(folders.takeLast(), QDir::Files | QDir::Dirs | QDir::NoDotAndDotDot);
        while (isToGoOn() && entries.hasNext()) {
            const QFileInfo entry = entries.nextFileInfo();
            if (isToBeVisited(entry) && folders.size() < maximumFoldersToVisit) {
                folders.append(entry.filePath());
            } else if (const std::optional<PlaylistDetails> playlist = playlistIn(entry)) {
                playlists.append(*playlist);
            }
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
    // Time that a disk that answers needs to finish after the deadline.
    constexpr auto grace = 200ms;
    constexpr auto patience = 20ms;

    while (!search().try_acquire_for(patience)) {
        if (deadline.hasExpired() || stop.stop_requested()) {
            return std::nullopt;
        }
    }
    auto found = std::make_shared<std::promise<QList<PlaylistDetails>>>();
    std::future<QList<PlaylistDetails>> answer = found->get_future();
    std::thread([found, deadline, stop] {
        found->set_value(findPlaylistFiles(musicFolder(), deadline, stop));
        search().release();
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
