// SPDX-License-Identifier: MIT
#include "music/BackgroundJobs.h"

#include "music/MusicApplication.h"
#include "music/typedValue.h"

#include <QVariantList>

#include <algorithm>
#include <chrono>
#include <utility>

namespace tunedeck {

namespace {

constexpr std::chrono::seconds patienceWithLaunch{10};
constexpr std::chrono::seconds betweenLoads{1};

/// None if there is no column, or `convert` cannot read one of its elements.
template <typename Value>
std::optional<QList<Value>> convertedColumn(
    const std::optional<QVariantList> &column, std::optional<Value> (*convert)(const QVariant &))
{
    if (!column) {
        return std::nullopt;
    }
    QList<Value> values;
    values.reserve(column->size());
    for (const QVariant &element : *column) {
        const std::optional<Value> value = convert(element);
        if (!value) {
            return std::nullopt;
        }
        values.append(*value);
    }
    return values;
}

std::optional<LoadedPlaylists> readPlaylists(const MusicApplication &musicApp)
{
    const std::optional<MusicPlaylist> currentPlaylist = musicApp.currentPlaylist();
    const auto ids = convertedColumn(musicApp.playlistIds(), integerFrom);
    if (!ids) {
        return std::nullopt;
    }
    const auto names = convertedColumn(musicApp.playlistNames(), stringFrom);
    if (!names) {
        return std::nullopt;
    }

    LoadedPlaylists loaded;
    loaded.source = musicApp.playlistSource();
    loaded.hasMore = musicApp.hasMorePlaylists();
    const qsizetype count = std::min(ids->size(), names->size());
    loaded.options.reserve(count);
    for (qsizetype i = 0; i < count; ++i) {
        loaded.options.append(PlaylistOption{ids->at(i), names->at(i)});
        if (currentPlaylist && currentPlaylist->id == ids->at(i)) {
            loaded.current = loaded.options.constLast();
        }
    }
    return loaded;
}

/// Whether Music plays the playlist now, as far as it answers.
bool playUnlessCurrent(MusicApplication &musicApp, qint64 playlistId)
{
    const std::optional<MusicPlaylist> currentPlaylist = musicApp.currentPlaylist();
    const bool isCurrent = currentPlaylist && currentPlaylist->id == playlistId;
    return isCurrent || musicApp.playPlaylist(playlistId);
}

QStringList readOutputNames(const MusicApplication &musicApp)
{
    QStringList names;
    const auto devices = musicApp.currentAirPlayDevices().value_or(QList<MusicAirPlayDevice>());
    for (const MusicAirPlayDevice &device : devices) {
        if (device.kind == AirPlayDeviceKind::unknown || device.kind == AirPlayDeviceKind::computer) {
            continue;
        }
        if (device.name) {
            names.append(*device.name);
        }
    }
    return names;
}

} // namespace

BackgroundJobs::BackgroundJobs(MusicApplication &musicApp, QObject *parent)
    : QObject(parent)
    , m_musicApp(musicApp)
{
    // The jobs wait rather than work, and none may wait for another, not even on a single processor.
    m_pool.setMaxThreadCount(3);
    m_awaitedPlaylist.setObjectName(QStringLiteral("awaitedPlaylistTimer"));
    m_awaitedPlaylist.setSingleShot(true);
    m_awaitedPlaylist.setInterval(patienceWithLaunch);
    m_nextLoad.setObjectName(QStringLiteral("nextLoadTimer"));
    m_nextLoad.setSingleShot(true);
    m_nextLoad.setInterval(betweenLoads);
    connect(&m_nextLoad, &QTimer::timeout, this, [this] {
        if (m_awaitedPlaylist.isActive()) {
            loadPlaylists();
        }
    });
}

BackgroundJobs::~BackgroundJobs()
{
    // A running job talks to Music and posts to this object: both must still be whole.
    m_pool.clear();
    m_musicApp.endBackground();
    m_pool.waitForDone();
}

void BackgroundJobs::loadPlaylists()
{
    if (m_isLoadingPlaylists || !m_musicApp.isRunning()) {
        return;
    }
    m_isLoadingPlaylists = true;
    start(readPlaylists, [this](const std::optional<LoadedPlaylists> &loaded) {
        m_isLoadingPlaylists = false;
        if (loaded) {
            finishLoadingPlaylists(*loaded);
        }
        // A player that has just come may not have read its playlists yet.
        if (m_awaitedPlaylist.isActive()) {
            m_nextLoad.start();
        }
    });
}

void BackgroundJobs::playPlaylist(qint64 id)
{
    m_awaitedPlaylist.stop();
    m_chosenPlaylist = id;
    if (!m_playlistUnderWay) {
        startPlaying(id);
    } else {
        m_nextPlaylist = id == m_playlistUnderWay ? std::nullopt : std::optional(id);
    }
}

void BackgroundJobs::readAudioOutputNames()
{
    // The track timer asks every 1.5 s, and Music may take longer than that to answer.
    m_readsAudioOutputsAgain = m_isReadingAudioOutputs;
    if (m_isReadingAudioOutputs || !m_musicApp.isRunning()) {
        return;
    }
    m_isReadingAudioOutputs = true;
    start(readOutputNames, [this](const QStringList &names) { finishReadingAudioOutputs(names); });
}

void BackgroundJobs::cancel()
{
    ++m_session;
    m_pool.clear();
    m_isLoadingPlaylists = false;
    m_playlistUnderWay.reset();
    m_nextPlaylist.reset();
    m_isReadingAudioOutputs = false;
    m_readsAudioOutputsAgain = false;
}

template <typename Work, typename Apply> void BackgroundJobs::start(Work work, Apply apply)
{
    m_pool.start([this, work, apply, session = m_session] {
        const auto handOver = [this, apply, session, result = work(m_musicApp)] {
            if (session == m_session) {
                apply(result);
            }
        };
        QMetaObject::invokeMethod(this, handOver, Qt::QueuedConnection);
    });
}

void BackgroundJobs::finishLoadingPlaylists(const LoadedPlaylists &loaded)
{
    Q_EMIT playlistsLoaded(loaded);
    const bool isListed =
        std::ranges::find(loaded.options, m_chosenPlaylist, &PlaylistOption::id) != loaded.options.end();
    if (isListed && m_awaitedPlaylist.isActive()) {
        playPlaylist(m_chosenPlaylist);
    }
}

void BackgroundJobs::startPlaying(qint64 id)
{
    m_playlistUnderWay = id;
    m_pool.start([this, id, session = m_session] {
        const bool isPlayed = playUnlessCurrent(m_musicApp, id);
        QMetaObject::invokeMethod(
            this, [this, isPlayed, session] { finishPlaying(isPlayed, session); }, Qt::QueuedConnection);
    });
}

void BackgroundJobs::finishPlaying(bool isPlayed, quint64 session)
{
    if (session == m_session) {
        m_playlistUnderWay.reset();
    }
    if (m_playlistUnderWay) {
        return;
    }
    if (const std::optional<qint64> next = std::exchange(m_nextPlaylist, std::nullopt)) {
        startPlaying(*next);
    } else if (!isPlayed && !m_musicApp.isRunning()) {
        // Music is being launched. It may also have quit meanwhile.
        m_awaitedPlaylist.start();
    }
}

void BackgroundJobs::finishReadingAudioOutputs(const QStringList &names)
{
    m_isReadingAudioOutputs = false;
    if (m_readsAudioOutputsAgain) {
        readAudioOutputNames();
    }
    Q_EMIT audioOutputNamesRead(names);
}

} // namespace tunedeck
