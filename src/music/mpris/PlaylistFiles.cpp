// SPDX-License-Identifier: MIT
#include "music/mpris/PlaylistFiles.h"

#include "music/mpris/playlistFile.h"

#include <QByteArray>
#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QSet>
#include <QStandardPaths>
#include <QStringList>

#include <algorithm>
#include <chrono>
#include <condition_variable>
#include <filesystem>
#include <memory>
#include <mutex>
#include <semaphore>
#include <system_error>
#include <thread>
#include <utility>

namespace tunedeck {

namespace {
using namespace std::chrono_literals;
using Clock = std::chrono::steady_clock;

/// Limit for a disk with more folders than a user can have made.
constexpr qsizetype maximumFoldersToVisit = 100'000;
constexpr auto patience = 20ms;
/// A disk that has answered nothing for this long is left to its thread, and another thread goes on.
constexpr auto untilNextThread = 300ms;
constexpr int maximumThreads = 4;

/// Threads that wait for disks must not pile up. It is never destroyed, as a search may outlast the program.
std::counting_semaphore<maximumThreads> &freeThreads()
{
    static std::counting_semaphore<maximumThreads> threads{maximumThreads};
    return threads;
}

/// The path of an entry that a user sees. None for a name that is not text: Qt could not open it.
std::optional<QString> visiblePath(const std::filesystem::directory_entry &entry)
{
    const QByteArray encoded = QByteArray::fromStdString(entry.path().native());
    const QString path = QFile::decodeName(encoded);
    const bool isHidden = entry.path().filename().native().starts_with('.');
    return isHidden || QFile::encodeName(path) != encoded ? std::nullopt : std::optional(path);
}

/// The folders that threads of former searches still wait for.
class SilentFolders {
public:
    [[nodiscard]] bool contains(const QString &folder)
    {
        const std::lock_guard lock(m_mutex);
        return m_folders.contains(folder);
    }
    void add(const QStringList &folders)
    {
        const std::lock_guard lock(m_mutex);
        m_folders.unite(QSet<QString>(folders.cbegin(), folders.cend()));
    }
    void remove(const QString &folder)
    {
        const std::lock_guard lock(m_mutex);
        m_folders.remove(folder);
    }

private:
    std::mutex m_mutex;
    QSet<QString> m_folders;
};

SilentFolders &silentFolders()
{
    // Never destroyed, like the semaphore.
    static auto *const folders = new SilentFolders;
    return *folders;
}

/// One search. Its threads share it with the one that waits for the result.
class PlaylistSearch {
public:
    PlaylistSearch(const QString &folder, const QDeadlineTimer &deadline, std::stop_token stop)
        : m_deadline(deadline)
        , m_stop(std::move(stop))
        , m_top(folder)
        , m_folders{folder}
    {
    }

    /// Whether a further thread has something to do that the others do not get to.
    [[nodiscard]] bool needsThread()
    {
        const std::lock_guard lock(m_mutex);
        const bool isStuck = m_visited.isEmpty() || Clock::now() - m_lastStep >= untilNextThread;
        return isStuck && nextFolder() != m_folders.end();
    }
    /// The folder that a thread visits next. None if there is none, or nobody waits for it.
    [[nodiscard]] std::optional<QString> takeFolder()
    {
        const std::lock_guard lock(m_mutex);
        const auto next = nextFolder();
        if (next == m_folders.end() || !isToGoOn()) {
            return std::nullopt;
        }
        const QString folder = m_folders.takeAt(next - m_folders.begin());
        m_visited.append(folder);
        m_lastStep = Clock::now();
        return folder;
    }
    /// The body of a thread.
    void work(std::optional<QString> folder)
    {
        for (; folder; folder = takeFolder()) {
            // The first folder may have no name yet: the disk is asked for it.
            visit(folder->isEmpty() ? findTop() : *folder);
            finish(*folder);
        }
    }
    /// Waits until the search is whole, but not for long. Returns whether it goes on.
    [[nodiscard]] bool waitForThreads()
    {
        std::unique_lock lock(m_mutex);
        return !m_changed.wait_for(lock, patience, [this] { return isWhole(); }) && isToGoOn();
    }
    [[nodiscard]] std::optional<PlaylistFiles> result()
    {
        const std::lock_guard lock(m_mutex);
        silentFolders().add(m_visited);
        if (m_stop.stop_requested() || (m_playlists.isEmpty() && !isWhole())) {
            return std::nullopt;
        }
        keepFirst();
        std::ranges::sort(m_playlists, PlaylistOrder());
        tellSameNamesApart(m_playlists, QDir(m_top));
        return PlaylistFiles{.playlists = m_playlists, .isWhole = isWhole() && !m_isCut};
    }

private:
    [[nodiscard]] bool isToGoOn() const { return !m_deadline.hasExpired() && !m_stop.stop_requested(); }
    [[nodiscard]] bool isWhole() const { return m_folders.isEmpty() && m_visited.isEmpty(); }
    [[nodiscard]] QStringList::iterator nextFolder()
    {
        return std::ranges::find_if_not(
            m_folders, [](const QString &folder) { return silentFolders().contains(folder); });
    }

    QString findTop()
    {
        const QString folder = musicFolder();
        const std::lock_guard lock(m_mutex);
        m_top = folder;
        return folder;
    }

    void visit(const QString &folder)
    {
        if (folder.isEmpty()) {
            return;
        }
        // Not a recursive iterator: it keeps every folder open on the way down, however deep. And not Qt's: where
        // Qt 6.8 finds a name that is not text, it leaves out all that follow.
        std::error_code error;
        std::filesystem::directory_iterator entry(QFile::encodeName(folder).toStdString(), error);
        for (; entry != std::filesystem::directory_iterator() && isToGoOn(); entry.increment(error)) {
            add(*entry);
        }
    }

    void add(const std::filesystem::directory_entry &entry)
    {
        const std::optional<QString> path = visiblePath(entry);
        std::error_code error;
        // A link comes first: the other question would go to the disk that it leads to.
        const bool isFolder = path && !entry.is_symlink(error) && entry.is_directory(error);
        const std::optional<PlaylistDetails> playlist = path && !isFolder ? playlistIn(QFileInfo(*path)) : std::nullopt;
        const std::lock_guard lock(m_mutex);
        m_lastStep = Clock::now();
        if (isFolder && m_folders.size() >= maximumFoldersToVisit) {
            m_isCut = true;
        } else if (isFolder) {
            m_folders.append(*path);
        } else if (playlist) {
            m_playlists.append(*playlist);
        }
        if (m_playlists.size() >= 2 * maximumPlaylistFiles) {
            keepFirst();
        }
    }

    void keepFirst()
    {
        if (m_playlists.size() > maximumPlaylistFiles) {
            std::ranges::nth_element(m_playlists, m_playlists.begin() + maximumPlaylistFiles, PlaylistOrder());
            m_playlists.resize(maximumPlaylistFiles);
            m_isCut = true;
        }
    }

    void finish(const QString &folder)
    {
        {
            const std::lock_guard lock(m_mutex);
            m_visited.removeOne(folder);
        }
        silentFolders().remove(folder);
        m_changed.notify_all();
    }

    const QDeadlineTimer m_deadline;
    const std::stop_token m_stop;

    std::mutex m_mutex;
    std::condition_variable m_changed;
    QString m_top;
    QStringList m_folders; ///< to be visited
    QStringList m_visited; ///< that threads are in
    QList<PlaylistDetails> m_playlists;
    Clock::time_point m_lastStep;
    bool m_isCut = false; ///< whether something was left out
};

} // namespace

QString musicFolder()
{
    const QString folder = QStandardPaths::writableLocation(QStandardPaths::MusicLocation);
    return QDir(folder) == QDir::home() ? QString() : folder;
}

std::optional<PlaylistFiles> findPlaylistFiles(
    const QString &folder, const QDeadlineTimer &deadline, const std::stop_token &stop)
{
    const auto search = std::make_shared<PlaylistSearch>(folder, deadline, stop);
    do {
        if (search->needsThread() && freeThreads().try_acquire()) {
            std::thread([search, first = search->takeFolder()] {
                search->work(first);
                freeThreads().release();
            }).detach();
        }
    } while (search->waitForThreads());
    return search->result();
}

} // namespace tunedeck
