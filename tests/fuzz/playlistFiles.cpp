// SPDX-License-Identifier: MIT
#include "music/mpris/PlaylistFiles.h"

#include "music/mpris/playlistFile.h"
#include "require.h"
#include "requireText.h"

#include <QByteArray>
#include <QByteArrayList>
#include <QDeadlineTimer>
#include <QDir>
#include <QFile>
#include <QTemporaryDir>

#include <algorithm>
#include <fcntl.h>
#include <filesystem>
#include <set>
#include <sys/stat.h>
#include <system_error>
#include <unistd.h>

using namespace tunedeck;
using fuzz::require;
using fuzz::requireClean;

namespace {

constexpr qsizetype mostFiles = 20;

/// A folder in memory.
class Folder {
public:
    Folder() = default;
    Q_DISABLE_COPY_MOVE(Folder)
    /// Qt does not remove files whose names it cannot decode.
    ~Folder()
    {
        std::error_code ignored;
        std::filesystem::remove_all(QFile::encodeName(path()).constData(), ignored);
    }

    [[nodiscard]] QString path() const { return m_folder.path(); }

    /// Makes the file with this path in the folder, and the folders on its way. No name leads out of it.
    void make(const QByteArray &path) const
    {
        QByteArrayList names = path.left(1'000).split('/');
        names.removeIf([](const QByteArray &name) {
            return name.isEmpty() || name == "." || name == ".." || name.contains('\0') || name.size() > 255;
        });
        QByteArray at = QFile::encodeName(m_folder.path());
        for (qsizetype i = 0; i < names.size(); ++i) {
            at += '/' + names.at(i);
            if (i + 1 < names.size()) {
                ::mkdir(at.constData(), S_IRWXU);
            } else {
                ::close(::open(at.constData(), O_CREAT | O_WRONLY | O_CLOEXEC, S_IRUSR | S_IWUSR));
            }
        }
    }

private:
    const QTemporaryDir m_folder{QStringLiteral("/dev/shm/tunedeck-fuzz-XXXXXX")};
};

void checkPlaylist(const PlaylistDetails &playlist, const Folder &folder)
{
    requireClean(playlist.name);
    require(!playlist.name.isEmpty(), "a playlist has a name");
    require(playlist.id == playlistId(playlist.path), "a file's path makes its identifier");
    require(playlist.path.startsWith(folder.path()), "a playlist is in the folder");
    require(QFile::exists(playlist.path), "a playlist can be opened by its path");
}

void checkOrder(const QList<PlaylistDetails> &playlists)
{
    const PlaylistOrder comesBefore;
    for (const PlaylistDetails &one : playlists) {
        for (const PlaylistDetails &other : playlists) {
            require(!(comesBefore(one, other) && comesBefore(other, one)), "the order has one direction");
            require(comesBefore(one, other) || comesBefore(other, one) || one.path == other.path,
                "each file has its place in the order");
        }
    }
}

} // namespace

/// A path of a file in each line.
int LLVMFuzzerTestOneInput(const std::uint8_t *data, std::size_t size)
{
    const Folder folder;
    const QByteArrayList paths = QByteArray(reinterpret_cast<const char *>(data), qsizetype(size)).split('\n');
    for (const QByteArray &path : paths.mid(0, mostFiles)) {
        folder.make(path);
    }
    const auto files = findPlaylistFiles(folder.path(), QDeadlineTimer(QDeadlineTimer::Forever), {});
    require(files && files->isWhole, "a small folder is searched to its end");
    require(files->playlists.size() <= mostFiles, "each file is one playlist");
    std::set<QString> found;
    for (const PlaylistDetails &playlist : files->playlists) {
        checkPlaylist(playlist, folder);
        require(found.insert(playlist.path).second, "each file is there once");
    }
    checkOrder(files->playlists);
    return 0;
}
