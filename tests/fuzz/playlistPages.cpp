// SPDX-License-Identifier: MIT
#include "music/mpris/PlaylistPages.h"

#include "Value.h"
#include "require.h"
#include "requireText.h"

#include <QByteArrayView>
#include <QDBusObjectPath>
#include <QSet>

using namespace tunedeck;
using fuzz::require;
using fuzz::requireClean;
using fuzz::Value;

namespace {
void checkPlaylist(const PlaylistDetails &playlist)
{
    require(playlist.id >= 0 && playlist.id == playlistId(playlist.path), "a playlist's path makes its identifier");
    require(playlist.path.size() > 1 && !QDBusObjectPath(playlist.path).path().isEmpty(),
        "a playlist has a path that can be sent back");
    requireClean(playlist.name);
}

void checkPages(const PlaylistPages &pages)
{
    require(pages.playlists().size() <= PlaylistPages::maximumPlaylists, "playlists are limited");
    QSet<qint64> identifiers;
    for (const PlaylistDetails &playlist : pages.playlists()) {
        checkPlaylist(playlist);
        identifiers.insert(playlist.id);
    }
    require(identifiers.size() == pages.playlists().size(), "each playlist is there once");
}
} // namespace

extern "C" int LLVMFuzzerInitialize(int *, char ***)
{
    // QDBusObjectPath complains about invalid paths.
    qInstallMessageHandler([](QtMsgType, const QMessageLogContext &, const QString &) { });
    return 0;
}

/// The first value is the number of playlists that the player reports, if it is a number. The others are pages, and may
/// be active playlists.
int LLVMFuzzerTestOneInput(const std::uint8_t *data, std::size_t size)
{
    const QList<Value> values = Value::readAll(QByteArrayView(data, qsizetype(size)));
    PlaylistPages pages(values.isEmpty() ? std::nullopt : bus::number(values.first().plain()));
    for (const Value &value : values.mid(1)) {
        const QVariant page = value.plain();
        if (const auto active = decodeActivePlaylist(page)) {
            checkPlaylist(*active);
        }
        if (pages.isComplete()) {
            break;
        }
        const uint before = pages.nextIndex();
        pages.add(page);
        require(pages.isComplete() || pages.nextIndex() > before, "each request asks for later playlists");
        PlaylistPages repeating = pages;
        repeating.add(page);
        require(repeating.isComplete(), "a player that sends a page again is not asked further");
    }
    checkPages(pages);
    return 0;
}
