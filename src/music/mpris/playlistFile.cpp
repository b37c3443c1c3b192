// SPDX-License-Identifier: MIT
#include "music/mpris/playlistFile.h"

#include "music/mpris/bus/BusValue.h"

#include <QHash>

#include <algorithm>
#include <array>
#include <utility>

namespace tunedeck {

namespace {
bool hasPlaylistSuffix(const QFileInfo &file)
{
    // Not a QStringList, which is destroyed at the end of the program: a search may outlast it.
    constexpr std::array suffixes{
        QLatin1String("m3u"), QLatin1String("m3u8"), QLatin1String("pls"), QLatin1String("xspf")};
    return std::ranges::any_of(suffixes,
        [suffix = file.suffix()](QLatin1String known) { return suffix.compare(known, Qt::CaseInsensitive) == 0; });
}
} // namespace

std::optional<PlaylistDetails> playlistIn(const QFileInfo &file)
{
    const QString path = file.filePath();
    if (!hasPlaylistSuffix(file) || !file.isFile() || !file.isReadable()) {
        return std::nullopt;
    }
    const std::optional<QString> name = bus::text(file.completeBaseName());
    return name ? std::optional(PlaylistDetails{.id = playlistId(path), .path = path, .name = *name}) : std::nullopt;
}

PlaylistOrder::PlaylistOrder()
{
    m_collator.setNumericMode(true);
    m_collator.setCaseSensitivity(Qt::CaseInsensitive);
}

bool PlaylistOrder::operator()(const PlaylistDetails &left, const PlaylistDetails &right) const
{
    const int order = m_collator.compare(left.name, right.name);
    return order == 0 ? left.path < right.path : order < 0;
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

} // namespace tunedeck
